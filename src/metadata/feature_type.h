#ifndef KELD_TRANSL_METADATA_FEATURE_TYPE_H
#define KELD_TRANSL_METADATA_FEATURE_TYPE_H

#include <keld-transl/metadata/database_type.h>

#include <string_view>

namespace transl_tk {

/// Calls `count` with what a feature of that name counts under, if it counts at all.
template <class Count> void countFeature(std::string_view name, Count && count)
{
    auto const holds = [name](char const * word) {
        return name.find(word) != std::string_view::npos;
    };
    if (holds("CHAMFER") || holds("FILLET"))
        count(BlendFeatures);
    else if (holds("HOLE"))
        count(HoleFeatures);
}

} // namespace transl_tk

#endif
