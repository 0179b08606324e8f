#ifndef KELD_TRANSL_METADATA_HIERARCHY_INFO_H
#define KELD_TRANSL_METADATA_HIERARCHY_INFO_H

#include <string>

namespace transl_tk {

/// What `ProductAttributes::gatherVPMData` tells about one assembly, part or instance.
struct HierarchyInfo
{
    std::string id; ///< the entity's id
    /// Of an assembly or part the running number of its visit; of an instance the entity's id of
    /// what it places. These are different numbers.
    std::string key;
    std::string firstLabel;
    std::string secondLabel;
    std::string name;
    std::string parentKey; ///< running number of the parent's visit
    std::string partLabel;
    double transform[16] = {};
};

} // namespace transl_tk

#endif
