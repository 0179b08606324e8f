#include "support/foreign_value.h"
#include "support/slots.h"
#include "walks.h"

#include <keld-transl/attributes/branch.h>
#include <keld-transl/attributes/leaf.h>
#include <keld-transl/attributes/node_tree.h>

#include <algorithm>
#include <gtest/gtest.h>
#include <pthread.h>
#include <vector>

namespace transl_tk {
namespace {

using tests::ForeignValue;
using Freed = std::vector<int>;

/// Nodes that note their id when they go.
class NodeTreeTest : public testing::Test
{
protected:
    Branch * branch(int id) { return noting(Branch::create(id, "", Branch::Tag{0})); }
    Leaf * leaf(int id) { return noting(Leaf::create(id)); }

    static Branch * with(Branch * branch, std::vector<Node *> const & children)
    {
        for (Node * const child : children)
            branch->addNode(child);
        return branch;
    }

    static NodeTree * treeOf(std::vector<Node *> const & nodes)
    {
        NodeTree * const tree = NodeTree::create();
        for (Node * const node : nodes)
            tree->addNode(node);
        return tree;
    }

    /// The ids of the nodes that went since the last call, in ascending order.
    Freed freed()
    {
        Freed result;
        result.swap(m_Freed);
        std::sort(result.begin(), result.end());
        return result;
    }

private:
    template <class Kind> Kind * noting(Kind * node)
    {
        node->addProperty("end", new ForeignValue(node->getId(), &m_Freed));
        return node;
    }

    Freed m_Freed;
};

TEST_F(NodeTreeTest, WalksItsNodesInOrderOfAdding)
{
    std::vector<Node *> const expected{leaf(3), branch(2), leaf(1)};
    NodeTree * const tree = treeOf(expected);
    tree->addNode(nullptr);
    EXPECT_EQ(tests::walked<Node>(*tree, &NodeTree::forEachNode), expected);
    EXPECT_EQ(tests::stoppedAt<Node>(1, *tree, &NodeTree::forEachNode), std::pair(1, false));
    EXPECT_EQ(tests::stoppedAt<Node>(2, *tree, &NodeTree::forEachNode), std::pair(2, false));
    EXPECT_EQ(tests::stoppedAt<Node>(4, *tree, &NodeTree::forEachNode), std::pair(3, true));
    NodeTree::destruct(tree);
}

TEST_F(NodeTreeTest, IsMadeEmpty)
{
    NodeTree * const tree = NodeTree::create();
    EXPECT_TRUE(tree->forEachNode([](Node *, void *) { return false; }, nullptr));
    NodeTree::destruct(tree);
    NodeTree::destruct(nullptr);
    Node::destruct(nullptr);
}

TEST_F(NodeTreeTest, FreesAllThatHangsBelowIt)
{
    NodeTree * const tree =
        treeOf({with(branch(1), {leaf(2), with(branch(3), {leaf(4)})}), leaf(5)});
    NodeTree::destruct(tree);
    EXPECT_EQ(freed(), (Freed{1, 2, 3, 4, 5}));
}

TEST_F(NodeTreeTest, ALeafUnderTwoBranchesGoesWithTheSecond)
{
    Leaf * const shared = leaf(3);
    Branch * const first = with(branch(1), {shared});
    Branch * const second = with(branch(2), {shared});
    Node::destruct(first);
    EXPECT_EQ(freed(), (Freed{1}));
    EXPECT_EQ(shared->getId(), 3);
    Node::destruct(second);
    EXPECT_EQ(freed(), (Freed{2, 3}));
}

TEST_F(NodeTreeTest, ANodeMayHangUnderATreeAndABranchTwice)
{
    Leaf * const shared = leaf(2);
    Branch * const parent = with(branch(1), {shared, shared});
    NodeTree * const first = treeOf({shared, parent});
    NodeTree * const second = treeOf({shared});
    EXPECT_EQ(tests::walked<Node>(*parent, &Branch::forEachNode),
              (std::vector<Node *>{shared, shared}));
    NodeTree::destruct(first);
    EXPECT_EQ(freed(), (Freed{1}));
    NodeTree::destruct(second);
    EXPECT_EQ(freed(), (Freed{2}));
}

TEST_F(NodeTreeTest, ABranchSharedByTreesKeepsWhatHangsBelowIt)
{
    Branch * const shared = with(branch(1), {leaf(2)});
    NodeTree * const first = treeOf({shared});
    NodeTree * const second = treeOf({with(branch(3), {shared})});
    NodeTree::destruct(first);
    EXPECT_EQ(freed(), Freed{});
    NodeTree::destruct(second);
    EXPECT_EQ(freed(), (Freed{1, 2, 3}));
}

TEST_F(NodeTreeTest, ABranchBelowItselfIsFreedOnRequestAndOnce)
{
    Branch * const itself = branch(1);
    with(itself, {itself, leaf(2), itself});
    Node::destruct(itself);
    EXPECT_EQ(freed(), (Freed{1, 2}));
}

TEST_F(NodeTreeTest, ARingOfBranchesIsFreedOnRequestAndOnce)
{
    Branch * const first = branch(1);
    with(first, {with(branch(2), {with(branch(3), {first})})});
    Node::destruct(first);
    EXPECT_EQ(freed(), (Freed{1, 2, 3}));
}

TEST_F(NodeTreeTest, ARingOutlivesItsTreeUntilItIsFreedOnRequest)
{
    Branch * const first = branch(1);
    NodeTree * const tree = treeOf({with(first, {with(branch(2), {first})}), leaf(3)});
    NodeTree::destruct(tree);
    EXPECT_EQ(freed(), (Freed{3}));
    Node::destruct(first);
    EXPECT_EQ(freed(), (Freed{1, 2}));
}

/// Runs `body` on a thread with a stack of 512 KB.
void onSmallStack(void (*body)())
{
    pthread_attr_t attributes;
    ASSERT_EQ(::pthread_attr_init(&attributes), 0);
    ASSERT_EQ(::pthread_attr_setstacksize(&attributes, 512UL * 1024), 0);
    auto const run = [](void * argument) -> void * {
        (*static_cast<void (**)()>(argument))();
        return nullptr;
    };
    pthread_t thread{};
    ASSERT_EQ(::pthread_create(&thread, &attributes, run, &body), 0);
    EXPECT_EQ(::pthread_join(thread, nullptr), 0);
    ::pthread_attr_destroy(&attributes);
}

/// A chain of branches, each with a leaf beside the next branch; every node notes its end.
Branch * aDeepBranch(int depth, Freed & freed)
{
    Branch * below = nullptr;
    for (int i = 0; i < depth; ++i) {
        Branch * const branch = Branch::create(i, "", Branch::Tag{0});
        branch->addProperty("end", new ForeignValue(i, &freed));
        branch->addNode(below);
        branch->addNode(Leaf::create(i));
        below = branch;
    }
    return below;
}

constexpr int Depth = 100'000;

TEST(DeepNodes, AreFreedWithoutDeepStack)
{
    onSmallStack([] {
        Freed freed;
        Node::destruct(aDeepBranch(Depth, freed));
        EXPECT_EQ(freed.size(), static_cast<std::size_t>(Depth));
    });
}

TEST(DeepNodes, AreFreedByTheirTreeWithoutDeepStack)
{
    onSmallStack([] {
        Freed freed;
        NodeTree * const tree = NodeTree::create();
        tree->addNode(aDeepBranch(Depth, freed));
        NodeTree::destruct(tree);
        EXPECT_EQ(freed.size(), static_cast<std::size_t>(Depth));
    });
}

struct FurtherOperation : NodeTree
{
    virtual void further() {}
};

TEST(NodeTreeTable, HoldsItsOperationsThenTheDestructor)
{
    EXPECT_EQ(tests::slotOf(&NodeTree::addNode), 0U);
    EXPECT_EQ(tests::slotOf(&NodeTree::forEachNode), 1U);
    EXPECT_EQ(tests::slotOf(&FurtherOperation::further), 4U); // the destructor takes two
}

} // namespace
} // namespace transl_tk
