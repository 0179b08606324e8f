#include "exchange/model_content.h"

#include <keld-transl/product/gather_hierarchies.h>

namespace transl_tk {

ModelContent::ModelContent(SubPool & model) : subPool(model)
{
    GatherHierarchies gather(assemblies, parts, instances);
    model.m_Hierarchies.m_Entities.forEach(
        [&](int id, Base * hierarchy) { gather({id, hierarchy}); });
}

} // namespace transl_tk
