#include "metadata/feature_type.h"

#include <keld-transl/metadata/database_policy.h>

namespace transl_tk {

DataBasePolicy::~DataBasePolicy() = default;

void DataBasePolicy::addFeatureType(std::string const & name)
{
    countFeature(name, [this](DataBaseType type) { addData(type); });
}

} // namespace transl_tk
