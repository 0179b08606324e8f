#ifndef KELD_TRANSL_PRODUCT_HIERARCHY_REF_H
#define KELD_TRANSL_PRODUCT_HIERARCHY_REF_H

#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace transl_tk {

/// A node of the product structure that may be gone by the time it is wanted. Its id, kept beside
/// the pointer, tells whether it still is.
struct HierarchyRef
{
    HierarchyRef() = default;
    explicit HierarchyRef(Hierarchy * node)
        : hierarchy(node), id(node != nullptr ? node->getId() : 0)
    {}

    Hierarchy * hierarchy = nullptr;
    int id = 0;

    /// The node when it stands in the model, else null. The current sub-pool is asked first.
    Hierarchy * living() const noexcept;

    /// The same, and null as well when another type of node has taken address and id over.
    Assembly * livingAssembly() const;
    Component * livingComponent() const;
    Instance * livingInstance() const;
};

/// The parent of a node when it still stands in the model, else null.
Assembly * livingParentOf(Hierarchy * node);

/// While one of these lives, every node of the process goes: the nodes need not leave each other's
/// lists, and the instances have gone before the components do.
class EndOfAllNodes
{
public:
    explicit EndOfAllNodes(bool isAll) noexcept : m_Before(std::exchange(s_GoesOn, isAll)) {}
    EndOfAllNodes(EndOfAllNodes const &) = delete;
    EndOfAllNodes & operator=(EndOfAllNodes const &) = delete;
    ~EndOfAllNodes() { s_GoesOn = m_Before; }

    static bool goesOn() noexcept { return s_GoesOn; }

private:
    inline static bool s_GoesOn = false;

    bool m_Before;
};

/// Nodes in the order of a walk, of which those are passed over that are freed meanwhile.
class HierarchyWalk
{
public:
    explicit HierarchyWalk(std::vector<HierarchyRef> nodes);

    /// The next node, null at the end.
    Hierarchy * next() noexcept;

    /// To be called whenever a node is freed.
    static void noteEnd() noexcept { ++s_Ends; }

private:
    static std::size_t s_Ends;

    std::vector<HierarchyRef> m_Nodes;
    std::size_t m_Next = 0;
    std::size_t m_Ends; ///< as long as nothing has ended since, no node has to be looked up
};

} // namespace transl_tk

#endif
