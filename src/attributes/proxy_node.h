#ifndef KELD_TRANSL_ATTRIBUTES_PROXY_NODE_H
#define KELD_TRANSL_ATTRIBUTES_PROXY_NODE_H

#include "attributes/entity_links.h"
#include "attributes/property_list.h"

#include <keld-transl/attributes/branch.h>
#include <keld-transl/attributes/leaf.h>
#include <keld-transl/attributes/parameter.h>

#include <cstddef>
#include <string>
#include <vector>

namespace transl_tk {

/// What nodes of both kinds hold.
struct ProxyNode
{
    explicit ProxyNode(int id) noexcept : m_Id(id) {}

    int m_Id;
    int m_RefCounter = 0; ///< parents that hold the node
    EntityLinks m_Entities;
    PropertyList m_Properties;
    Node * m_NextDoomed = nullptr; ///< see `DoomedNodes`
};

ProxyNode & proxyOf(Node & node) noexcept;

/// The operations of both kinds of nodes; `Kind` is the public class.
template <class Kind> class ProxyNodeOf : public Kind, public ProxyNode
{
public:
    explicit ProxyNodeOf(int id) noexcept : ProxyNode(id) {}

    int getId() const override { return m_Id; }
    void addProperty(char const * name, IValue * value) override { m_Properties.add(name, value); }
    bool forEachProperty(bool (*callback)(char const *, IValue *, void *), void * user) override
    {
        return m_Properties.forEach(callback, user);
    }
    void addEntity(Base * entity) override { m_Entities.add(entity); }
    bool forEachEntity(bool (*callback)(Base *, void *), void * user) override
    {
        return m_Entities.forEach(callback, user);
    }
};

/// Children of a branch or a tree. A callback of `forEach` may add further ones.
class NodeList
{
public:
    /// Appends `node` and counts the hold on it; null adds nothing.
    void hold(Node * node);

    bool forEach(bool (*callback)(Node *, void *), void * user) const
    {
        for (std::size_t i = 0; i < m_Nodes.size(); ++i)
            if (!callback(m_Nodes[i], user))
                return false;
        return true;
    }

    auto begin() const noexcept { return m_Nodes.begin(); }
    auto end() const noexcept { return m_Nodes.end(); }

private:
    std::vector<Node *> m_Nodes;
};

class ProxyBranch final : public ProxyNodeOf<Branch>
{
public:
    ProxyBranch(int id, char const * name, Tag tag) : ProxyNodeOf(id), m_Name(name), m_Tag(tag) {}
    ~ProxyBranch() override = default;

    int getType() const override { return 1; }

    Tag getTag() const override { return m_Tag; }
    void setName(char const * name) override { m_Name = name; }
    char const * getName() const override { return m_Name.c_str(); }
    void addNode(Node * node) override { m_Children.hold(node); }
    bool forEachNode(bool (*callback)(Node *, void *), void * user) override
    {
        return m_Children.forEach(callback, user);
    }

    NodeList m_Children;

private:
    std::string m_Name;
    Tag m_Tag;
};

class ProxyLeaf final : public ProxyNodeOf<Leaf>
{
public:
    explicit ProxyLeaf(int id) noexcept : ProxyNodeOf(id) {}
    ~ProxyLeaf() override;

    int getType() const override { return 2; }

    void addParameter(Parameter * parameter) override;
    bool forEachParameter(bool (*callback)(Parameter *, void *), void * user) override;

private:
    std::vector<Parameter *> m_Parameters;
};

/// Nodes on their way out, chained through themselves: freeing takes neither memory nor stack,
/// however deep the nodes stand.
class DoomedNodes
{
public:
    DoomedNodes() = default;
    DoomedNodes(DoomedNodes const &) = delete;
    DoomedNodes & operator=(DoomedNodes const &) = delete;
    /// Frees the nodes, and all that only they hold.
    ~DoomedNodes();

    /// Dooms `node`, whoever holds it.
    void add(Node & node) noexcept;

    /// Lets go of each of `nodes`, and dooms those that nobody else holds.
    void release(NodeList const & nodes) noexcept;

private:
    Node * m_First = nullptr;
    Node ** m_End = &m_First;
};

} // namespace transl_tk

#endif
