#ifndef KELD_TRANSL_ATTRIBUTES_NODE_TREE_H
#define KELD_TRANSL_ATTRIBUTES_NODE_TREE_H

#include <keld-transl/export.h>

namespace transl_tk {

class Node;

/// The top nodes of a parameter tree: what a translator keeps of the feature or construction
/// structure of a part. Its nodes form a directed graph without rings rather than a strict tree.
class KELD_TRANSL_EXPORT NodeTree
{
protected:
    NodeTree() = default;

public:
    NodeTree(NodeTree const &) = delete;
    NodeTree & operator=(NodeTree const &) = delete;

    static NodeTree * create();

    /// Frees the tree and every node that only the tree holds. Null is no fault.
    static void destruct(NodeTree * tree);

    /// Adds `node` behind the other top nodes; null adds nothing.
    virtual void addNode(Node * node) = 0;

    /// Calls `callback` for each top node in order of adding. Stops at the first false and returns
    /// false; otherwise true.
    virtual bool forEachNode(bool (*callback)(Node * node, void * user), void * user) = 0;

protected:
    virtual ~NodeTree() = default;
};

} // namespace transl_tk

#endif
