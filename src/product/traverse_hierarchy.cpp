#include "product/hierarchy_ref.h"

#include <keld-transl/process/server.h>
#include <keld-transl/product/traverse_hierarchy.h>

#include <ostream>
#include <unordered_set>

namespace transl_tk {

namespace {

HierarchyWalk childrenOf(Assembly * assembly)
{
    std::vector<HierarchyRef> children;
    assembly->forEachChild(
        [](Hierarchy * child, void * found) {
            static_cast<std::vector<HierarchyRef> *>(found)->emplace_back(child);
            return true;
        },
        &children);
    return HierarchyWalk(std::move(children));
}

/// An assembly whose pre-action has been called and whose post-action has not.
struct OpenAssembly
{
    explicit OpenAssembly(Assembly * open) : assembly(open), children(childrenOf(open)) {}

    Assembly * assembly;
    HierarchyWalk children;
};

} // namespace

void TraverseHierarchy::setPreActionCB(Callback callback)
{
    m_PreAction = callback;
}

void TraverseHierarchy::setPostActionCB(Callback callback)
{
    m_PostAction = callback;
}

bool TraverseHierarchy::traverse(Hierarchy * const node, void * user)
{
    // Assemblies nest deeper than the stack may be.
    std::vector<OpenAssembly> path;
    std::unordered_set<Hierarchy const *> open;
    auto const leave = [&](Hierarchy * left) {
        return m_PostAction == nullptr || m_PostAction(left, user);
    };
    auto const enter = [&](Hierarchy * entered) {
        bool const isAssembly =
            entered != nullptr && entered->getHierarchyType() == Hierarchy::Assembly;
        if (isAssembly && open.count(entered) != 0) {
            Server::Stream()->post(StreamPolicy::Error)
                << "The assembly \"" << Hierarchy::name(entered)
                << "\" is its own descendant; the walk ends there." << std::endl;
            return false;
        }
        if (m_PreAction == nullptr)
            return leave(entered);
        if (!m_PreAction(entered, user))
            return false;
        if (!isAssembly)
            return leave(entered);
        path.emplace_back(static_cast<Assembly *>(entered));
        open.insert(entered);
        return true;
    };

    if (!enter(node))
        return false;
    while (!path.empty()) {
        if (Hierarchy * const child = path.back().children.next()) {
            if (!enter(child))
                return false;
        } else {
            Assembly * const done = path.back().assembly;
            path.pop_back();
            open.erase(done);
            if (!leave(done))
                return false;
        }
    }
    return true;
}

} // namespace transl_tk
