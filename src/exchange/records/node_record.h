#ifndef KELD_TRANSL_EXCHANGE_RECORDS_NODE_RECORD_H
#define KELD_TRANSL_EXCHANGE_RECORDS_NODE_RECORD_H

#include "exchange/records/attachment_list.h"
#include "exchange/records/value_record.h"

#include <keld-transl/attributes/branch.h>
#include <keld-transl/attributes/leaf.h>
#include <keld-transl/attributes/node_tree.h>
#include <keld-transl/attributes/parameter.h>

#include <cstddef>
#include <unordered_set>
#include <vector>

namespace transl_tk {

/// The numbers of `Node::getType`.
enum NodeType : int { NodeTypeBranch = 1, NodeTypeLeaf = 2 };

/// Puts the parameter tree of one part: a count of top nodes and the nodes, each with everything
/// below it. A node that hangs in several places is put in full at the first, and as its bare id
/// at the others.
///
/// The way down is kept in a list, not on the stack: trees may be as deep as they like.
template <class Sink> class NodeWriter
{
public:
    explicit NodeWriter(Sink & sink) : m_Sink(sink) {}

    void put(NodeTree * tree)
    {
        if (tree == nullptr) {
            m_Sink.count(0);
            return;
        }
        descend(nullptr, *tree);
        while (!m_Way.empty()) {
            Level & level = m_Way.back();
            if (level.next < level.end)
                put(*m_Nodes[level.next++]);
            else
                ascend();
        }
    }

private:
    /// A branch, or the tree itself, with its children in `m_Nodes`.
    struct Level
    {
        Branch * branch;
        std::size_t begin;
        std::size_t next;
        std::size_t end;
    };

    template <class Parent> void descend(Branch * branch, Parent & parent)
    {
        std::size_t const begin = m_Nodes.size();
        parent.forEachNode(
            [](Node * node, void * nodes) {
                static_cast<std::vector<Node *> *>(nodes)->push_back(node);
                return true;
            },
            &m_Nodes);
        m_Sink.count(m_Nodes.size() - begin);
        m_Way.push_back({branch, begin, begin, m_Nodes.size()});
    }

    void ascend()
    {
        Level const level = m_Way.back();
        m_Way.pop_back();
        m_Nodes.resize(level.begin);
        if (level.branch != nullptr)
            finish(*level.branch);
    }

    void put(Node & node)
    {
        m_Sink.i32(node.getId());
        if (!m_Put.insert(node.getId()).second)
            return;
        m_Sink.i32(node.getType());
        if (node.getType() == NodeTypeBranch) {
            auto & branch = static_cast<Branch &>(node);
            m_Sink.i32(branch.getTag());
            m_Sink.string(branch.getName());
            descend(&branch, branch);
        } else {
            putParameters(static_cast<Leaf &>(node));
            finish(node);
        }
    }

    void putParameters(Leaf & leaf)
    {
        std::size_t parameters = 0;
        leaf.forEachParameter(
            [](Parameter *, void * count) {
                ++*static_cast<std::size_t *>(count);
                return true;
            },
            &parameters);
        m_Sink.count(parameters);
        leaf.forEachParameter(
            [](Parameter * parameter, void * stream) {
                auto & sink = *static_cast<Sink *>(stream);
                sink.i32(parameter->getParam());
                putValues(sink, *parameter);
                return true;
            },
            &m_Sink);
    }

    /// Puts what ends a node of either type.
    void finish(Node & node)
    {
        putAttachments(m_Sink, node);
        std::size_t properties = 0;
        node.forEachProperty(
            [](char const *, IValue *, void * count) {
                ++*static_cast<std::size_t *>(count);
                return true;
            },
            &properties);
        m_Sink.count(properties);
        node.forEachProperty(
            [](char const * name, IValue * value, void * stream) {
                static_cast<Sink *>(stream)->string(name);
                putValue(*static_cast<Sink *>(stream), value);
                return true;
            },
            &m_Sink);
    }

    Sink & m_Sink;
    std::vector<Level> m_Way;
    std::vector<Node *> m_Nodes;
    std::unordered_set<int> m_Put; ///< ids of the nodes that have been put
};

/// Reads what a `NodeWriter` put into `tree`, which is empty.
void readNodes(StreamReader & reader, NodeTree & tree);

} // namespace transl_tk

#endif
