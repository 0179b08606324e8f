#include "model/entity.h"
#include "product/proxy_assembly.h"

#include <keld-transl/product/hierarchy.h>

namespace transl_tk {

namespace {

/// An assembly on its way out, and those of its children that go before it does.
struct EndingAssembly
{
    explicit EndingAssembly(ProxyAssembly * ending)
        : assembly(ending), components(ending->takeComponents())
    {}

    ProxyAssembly * assembly;
    std::vector<HierarchyRef> components;
    std::size_t next = 0;
};

/// The units of the assembly above a single part or instance.
Units * unitsAbove(Hierarchy * node)
{
    // Above an instance, the kind of its component stands in the place of a length type. Readers
    // of models know these assemblies by it.
    auto const lengthType = node->getHierarchyType() == Hierarchy::Part
                                ? static_cast<Component *>(node)->getUnits()->getLengthType()
                                : static_cast<Units::LengthType>(EntityKindHierarchy);
    return Units::create(lengthType, Units::AngularType{0}, 1.0, 1.0);
}

/// The topmost assembly above `assembly`, or `assembly` itself when there is none.
Assembly * rootOf(Assembly * assembly)
{
    Assembly * root = assembly;
    std::size_t left = CurrentSubPool::get()->m_Hierarchies.m_Entities.size();
    while (Assembly * const parent = livingParentOf(root)) {
        if (left-- == 0)
            return assembly;
        root = parent;
    }
    return root->getParent() == nullptr ? root : assembly;
}

} // namespace

Hierarchy::~Hierarchy()
{
    leaveStore(&SubPool::m_Hierarchies, this);
    HierarchyWalk::noteEnd();
}

void Hierarchy::destruct(Hierarchy * hierarchy)
{
    // Assemblies nest deeper than the stack may be: those that wait for their children stand here.
    std::vector<EndingAssembly> path;
    auto const end = [&](Hierarchy * node) {
        bool const isAssembly = node != nullptr && node->getHierarchyType() == Assembly;
        if (auto * const assembly = isAssembly ? dynamic_cast<ProxyAssembly *>(node) : nullptr) {
            if (assembly->beginEnd())
                path.emplace_back(assembly);
        } else {
            delete node;
        }
    };
    end(hierarchy);
    while (!path.empty()) {
        EndingAssembly & last = path.back();
        if (last.next < last.components.size()) {
            if (Hierarchy * const child = last.components[last.next++].living())
                end(child);
        } else {
            ProxyAssembly * const assembly = last.assembly;
            path.pop_back();
            delete assembly;
        }
    }
}

void Hierarchy::gatherTopLevelHierarchies(std::vector<Hierarchy *> & out)
{
    SubPool * const subPool = CurrentSubPool::get();
    if (subPool == nullptr)
        return;
    subPool->m_Hierarchies.m_Entities.forEach([&](int, Base * entity) {
        auto * const node = static_cast<Hierarchy *>(entity);
        if (node->getParent() == nullptr)
            out.push_back(node);
    });
}

Assembly * Hierarchy::getTopAssembly()
{
    std::vector<Hierarchy *> top;
    gatherTopLevelHierarchies(top);
    if (top.empty())
        return nullptr;
    bool const single = top.size() == 1;
    if (single && top[0]->getHierarchyType() == Assembly)
        return static_cast<transl_tk::Assembly *>(top[0]);

    constexpr int id = -1;
    transl_tk::Assembly * above = transl_tk::Assembly::create(id, single ? "" : "_");
    if (above == nullptr) {
        auto * const taken =
            static_cast<Hierarchy *>(CurrentSubPool::get()->m_Hierarchies.m_Entities.lookup(id));
        if (taken->getHierarchyType() != Assembly)
            return nullptr;
        above = static_cast<transl_tk::Assembly *>(taken);
    } else if (single) {
        above->setUnits(unitsAbove(top[0]));
    }
    // An assembly that was there may stand below one of these nodes, which is not to become its own
    // descendant.
    transl_tk::Assembly * const root = rootOf(above);
    for (Hierarchy * const node : top)
        if (node != root)
            above->addChild(node);
    return root;
}

char const * Hierarchy::name(Hierarchy * const hierarchy)
{
    if (hierarchy == nullptr)
        return nullptr;
    switch (hierarchy->getHierarchyType()) {
    case Part:
    case Assembly:
        return static_cast<Component *>(hierarchy)->getName();
    case Instance:
        return static_cast<transl_tk::Instance *>(hierarchy)->getComponent()->getName();
    }
    return nullptr;
}

} // namespace transl_tk
