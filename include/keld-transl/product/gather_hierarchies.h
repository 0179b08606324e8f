#ifndef KELD_TRANSL_PRODUCT_GATHER_HIERARCHIES_H
#define KELD_TRANSL_PRODUCT_GATHER_HIERARCHIES_H

#include <keld-transl/export.h>

#include <utility>
#include <vector>

namespace transl_tk {

class Assembly;
class Base;
class Instance;
class Part;

/// Sorts the entries of `SubPool::m_Hierarchies` into three lists:
/// `std::for_each(table.begin(), table.end(), GatherHierarchies(assemblies, parts, instances))`.
class KELD_TRANSL_EXPORT GatherHierarchies
{
public:
    /// Refers to the lists, which stay the caller's.
    GatherHierarchies(std::vector<Assembly *> & assemblies, std::vector<Part *> & parts,
                      std::vector<Instance *> & instances)
        : m_Assemblies(assemblies), m_Parts(parts), m_Instances(instances)
    {}

    /// Appends the entry to the list of its type.
    void operator()(std::pair<int, Base *> entry);

private:
    std::vector<Assembly *> & m_Assemblies;
    std::vector<Part *> & m_Parts;
    std::vector<Instance *> & m_Instances;
};

} // namespace transl_tk

#endif
