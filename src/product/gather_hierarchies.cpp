#include <keld-transl/product/assembly.h>
#include <keld-transl/product/gather_hierarchies.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>

namespace transl_tk {

void GatherHierarchies::operator()(std::pair<int, Base *> entry)
{
    auto * const node = static_cast<Hierarchy *>(entry.second);
    switch (node->getHierarchyType()) {
    case Hierarchy::Part:
        m_Parts.push_back(static_cast<Part *>(node));
        break;
    case Hierarchy::Assembly:
        m_Assemblies.push_back(static_cast<Assembly *>(node));
        break;
    case Hierarchy::Instance:
        m_Instances.push_back(static_cast<Instance *>(node));
        break;
    }
}

} // namespace transl_tk
