#include "attributes/proxy_node.h"

namespace transl_tk {

namespace {

bool isBranch(Node const & node)
{
    return node.getType() == 1;
}

ProxyBranch & branchOf(Node & node)
{
    return static_cast<ProxyBranch &>(node);
}

ProxyLeaf & leafOf(Node & node)
{
    return static_cast<ProxyLeaf &>(node);
}

} // namespace

ProxyNode & proxyOf(Node & node) noexcept
{
    if (isBranch(node))
        return branchOf(node);
    return leafOf(node);
}

void NodeList::hold(Node * node)
{
    if (node == nullptr)
        return;
    m_Nodes.push_back(node);
    ++proxyOf(*node).m_RefCounter;
}

void DoomedNodes::add(Node & node) noexcept
{
    ProxyNode & proxy = proxyOf(node);
    proxy.m_RefCounter = 0; // no child that holds it dooms it a second time
    *m_End = &node;
    m_End = &proxy.m_NextDoomed;
}

void DoomedNodes::release(NodeList const & nodes) noexcept
{
    for (Node * const node : nodes)
        if (proxyOf(*node).m_RefCounter-- == 1)
            add(*node);
}

DoomedNodes::~DoomedNodes()
{
    // All are found before the first one goes: in a ring a child still counts down its parent.
    for (Node * node = m_First; node != nullptr; node = proxyOf(*node).m_NextDoomed)
        if (isBranch(*node))
            release(branchOf(*node).m_Children);
    while (m_First != nullptr) {
        Node & node = *m_First;
        m_First = proxyOf(node).m_NextDoomed;
        if (isBranch(node))
            delete &branchOf(node);
        else
            delete &leafOf(node);
    }
}

void Node::destruct(Node * node)
{
    DoomedNodes doomed;
    if (node != nullptr)
        doomed.add(*node);
}

} // namespace transl_tk
