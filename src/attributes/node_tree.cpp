#include "attributes/proxy_node.h"

#include <keld-transl/attributes/node_tree.h>

namespace transl_tk {

namespace {

class ProxyNodeTree final : public NodeTree
{
public:
    ProxyNodeTree() = default;
    ProxyNodeTree(ProxyNodeTree const &) = delete;
    ProxyNodeTree & operator=(ProxyNodeTree const &) = delete;
    ~ProxyNodeTree() override
    {
        DoomedNodes doomed;
        doomed.release(m_Nodes);
    }

    void addNode(Node * node) override { m_Nodes.hold(node); }
    bool forEachNode(bool (*callback)(Node *, void *), void * user) override
    {
        return m_Nodes.forEach(callback, user);
    }

private:
    NodeList m_Nodes;
};

} // namespace

NodeTree * NodeTree::create()
{
    return new ProxyNodeTree;
}

void NodeTree::destruct(NodeTree * tree)
{
    delete tree;
}

} // namespace transl_tk
