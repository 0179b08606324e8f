#ifndef KELD_TRANSL_PRODUCT_TRAVERSE_HIERARCHY_H
#define KELD_TRANSL_PRODUCT_TRAVERSE_HIERARCHY_H

#include <keld-transl/product/hierarchy.h>

namespace transl_tk {

/// Walks a product structure, depth first. Keeps nothing between walks but its two callbacks.
class KELD_TRANSL_EXPORT TraverseHierarchy
{
public:
    /// What is called for a node; false ends the whole walk.
    using Callback = bool (*)(Hierarchy *, void *);

    TraverseHierarchy() = default;
    ~TraverseHierarchy() = default;
    TraverseHierarchy(TraverseHierarchy const &) = default;
    TraverseHierarchy & operator=(TraverseHierarchy const &) = default;

    /// What is called before a node's children, null at first. Without it the walk does not
    /// descend: the post-action is called for the first node alone.
    void setPreActionCB(Callback callback);
    /// What is called after a node's children, null at first.
    void setPostActionCB(Callback callback);

    /// Calls the pre-action for `node`, walks its children in their order when it is an assembly,
    /// and calls the post-action. Returns false as soon as a callback does, and calls nothing more
    /// then. An instance is not followed to its component.
    ///
    /// The children are those after the pre-action; those that are freed during the walk are
    /// left out. No depth overflows the stack. An assembly that is its own descendant ends the walk
    /// with false and a message of type `Error`.
    bool traverse(Hierarchy * const node, void * user);

private:
    Callback m_PreAction = nullptr;
    Callback m_PostAction = nullptr;
};

} // namespace transl_tk

#endif
