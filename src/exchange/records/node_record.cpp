#include "exchange/records/node_record.h"

#include "attributes/proxy_node.h"

#include <string>
#include <unordered_map>

namespace transl_tk {

namespace {

/// Reads the nodes of one part.
class NodeReader
{
public:
    NodeReader(StreamReader & reader, NodeTree & tree) : m_Reader(reader), m_Tree(tree) {}
    NodeReader(NodeReader const &) = delete;
    NodeReader & operator=(NodeReader const &) = delete;
    /// Frees the branches that were not finished, when the reading fails.
    ~NodeReader()
    {
        while (!m_Way.empty()) {
            Node::destruct(m_Way.back().branch);
            m_Way.pop_back();
        }
    }

    void read()
    {
        std::size_t left = m_Reader.count(LeastSize);
        while (left != 0 || !m_Way.empty()) {
            std::size_t & children = m_Way.empty() ? left : m_Way.back().children;
            if (children != 0) {
                --children;
                readNode();
            } else {
                ascend();
            }
        }
    }

private:
    /// A node that came before is its id alone.
    static constexpr std::size_t LeastSize = 4;

    /// A branch whose children are being read, and how many of them are still to come.
    struct Level
    {
        Branch * branch;
        std::size_t children;
    };

    void readNode()
    {
        int id = 0;
        m_Reader.i32(id);
        auto const [place, isNew] = m_Nodes.try_emplace(id);
        if (!isNew) {
            if (place->second == nullptr)
                m_Reader.fail("the node " + std::to_string(id) + " is its own descendant");
            hang(*place->second);
            return;
        }
        int type = 0;
        m_Reader.i32(type);
        if (type == NodeTypeBranch)
            beginBranch(id);
        else if (type == NodeTypeLeaf)
            readLeaf(id);
        else
            m_Reader.fail("there is no node of type " + std::to_string(type));
    }

    void beginBranch(int id)
    {
        int tag = 0;
        m_Reader.i32(tag);
        m_Reader.string(m_Text);
        std::size_t const children = m_Reader.count(LeastSize);
        m_Way.push_back({nullptr, children});
        m_Way.back().branch = Branch::create(id, m_Text.c_str(), static_cast<Branch::Tag>(tag));
    }

    void ascend()
    {
        Branch & branch = *m_Way.back().branch;
        finish(branch);
        m_Way.pop_back();
        hang(branch);
    }

    void readLeaf(int id)
    {
        constexpr std::size_t LeastParameter = 8;
        geom::Owned<Node> node(Leaf::create(id));
        auto & leaf = static_cast<Leaf &>(*node);
        for (std::size_t left = m_Reader.count(LeastParameter); left != 0; --left) {
            int param = 0;
            m_Reader.i32(param);
            geom::Owned<Parameter> parameter(
                Parameter::create(static_cast<Parameter::Param>(param)));
            readValues(m_Reader, *parameter);
            leaf.addParameter(parameter.get());
            parameter.release();
        }
        finish(leaf);
        hang(*node.release());
    }

    /// Reads what ends a node of either type.
    void finish(Node & node)
    {
        constexpr std::size_t LeastProperty = 8;
        readAttachments(m_Reader, node);
        for (std::size_t left = m_Reader.count(LeastProperty); left != 0; --left) {
            m_Reader.string(m_Text);
            OwnedValue value = readValue(m_Reader);
            if (proxyOf(node).m_Properties.add(m_Text.c_str(), value.get()))
                value.release();
        }
        m_Nodes[node.getId()] = &node;
    }

    /// Gives a finished node to the parent that is being read.
    void hang(Node & node)
    {
        if (m_Way.empty())
            m_Tree.addNode(&node);
        else
            m_Way.back().branch->addNode(&node);
    }

    StreamReader & m_Reader;
    NodeTree & m_Tree;
    std::vector<Level> m_Way;
    std::unordered_map<int, Node *> m_Nodes; ///< null while a node is being read
    std::string m_Text;
};

} // namespace

void readNodes(StreamReader & reader, NodeTree & tree)
{
    NodeReader(reader, tree).read();
}

} // namespace transl_tk
