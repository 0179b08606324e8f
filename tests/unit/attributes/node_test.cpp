#include "support/foreign_value.h"
#include "support/models.h"
#include "support/slots.h"
#include "walks.h"

#include <keld-transl/attributes/branch.h>
#include <keld-transl/attributes/leaf.h>
#include <keld-transl/attributes/parameter.h>

#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <utility>
#include <vector>

namespace transl_tk {
namespace {

using tests::ForeignValue;
using Entities = std::vector<Base *>;
using Properties = std::vector<std::pair<std::string, IValue *>>;

struct FreeNode
{
    void operator()(Node * node) const { Node::destruct(node); }
};
template <class Kind> using Owned = std::unique_ptr<Kind, FreeNode>;

Owned<Branch> aBranch(char const * name = "branch")
{
    return Owned<Branch>(Branch::create(1, name, Branch::Tag{2}));
}

Owned<Leaf> aLeaf()
{
    return Owned<Leaf>(Leaf::create(1));
}

Properties propertiesOf(Node & node)
{
    Properties found;
    auto const note = [](char const * name, IValue * value, void * user) {
        static_cast<Properties *>(user)->emplace_back(name, value);
        return true;
    };
    EXPECT_TRUE(node.forEachProperty(note, &found));
    return found;
}

Entities entitiesOf(Node & node)
{
    return tests::walked<Base>(node, &Node::forEachEntity);
}

TEST(Node, TellsKindAndId)
{
    for (int const id : {-2147483647 - 1, -1, 0, 2147483647}) {
        Owned<Node> const branch(Branch::create(id, "", Branch::Tag{0}));
        Owned<Node> const leaf(Leaf::create(id));
        EXPECT_EQ(branch->getType(), 1);
        EXPECT_EQ(leaf->getType(), 2);
        EXPECT_EQ(branch->getId(), id);
        EXPECT_EQ(leaf->getId(), id);
    }
}

TEST(Node, IsMadeEmpty)
{
    auto const branch = aBranch();
    auto const leaf = aLeaf();
    EXPECT_TRUE(branch->forEachNode([](Node *, void *) { return false; }, nullptr));
    EXPECT_TRUE(leaf->forEachParameter([](Parameter *, void *) { return false; }, nullptr));
    for (Node * const node : {static_cast<Node *>(branch.get()), static_cast<Node *>(leaf.get())}) {
        EXPECT_TRUE(node->forEachEntity([](Base *, void *) { return false; }, nullptr));
        EXPECT_TRUE(
            node->forEachProperty([](char const *, IValue *, void *) { return false; }, nullptr));
    }
}

TEST(Node, KeepsPropertiesUnderCopiesOfTheirNames)
{
    auto const leaf = aLeaf();
    char name[] = "a";
    IValue * const first = IValue::create(1);
    IValue * const second = IValue::create("two");
    leaf->addProperty(name, first);
    name[0] = 'X';
    leaf->addProperty("", second);
    leaf->addProperty("null", nullptr);
    EXPECT_EQ(propertiesOf(*leaf), (Properties{{"a", first}, {"", second}, {"null", nullptr}}));
}

TEST(Node, KeepsTheFirstPropertyOfANameAndLeavesTheLaterValueWithTheCaller)
{
    std::vector<int> freed;
    auto branch = aBranch();
    auto * const first = new ForeignValue(11, &freed);
    ForeignValue second(12, &freed);
    branch->addProperty("a", first);
    branch->addProperty("a", &second);
    branch->addProperty("a", nullptr);
    EXPECT_EQ(propertiesOf(*branch), (Properties{{"a", first}}));
    branch.reset();
    EXPECT_EQ(freed, (std::vector{11}));
}

TEST(Node, ANullPropertyKeepsItsNameToo)
{
    std::vector<int> freed;
    auto const branch = aBranch();
    ForeignValue value(11, &freed);
    branch->addProperty("a", nullptr);
    branch->addProperty("a", &value);
    EXPECT_EQ(propertiesOf(*branch), (Properties{{"a", nullptr}}));
}

TEST(Node, KeepsThousandsOfPropertiesInOrderOfAdding)
{
    auto const leaf = aLeaf();
    Properties expected;
    for (int i = 0; i < 3000; ++i) {
        expected.emplace_back(std::to_string(i * 7919 % 3000), IValue::create(i));
        leaf->addProperty(expected.back().first.c_str(), expected.back().second);
    }
    EXPECT_EQ(propertiesOf(*leaf), expected);
}

TEST(Node, WalkOfPropertiesStopsAtTheFirstFalse)
{
    auto const leaf = aLeaf();
    for (char const * const name : {"a", "b", "c"})
        leaf->addProperty(name, nullptr);
    int calls = 0;
    auto const stop = [](char const *, IValue *, void * user) {
        return ++*static_cast<int *>(user) != 2;
    };
    EXPECT_FALSE(leaf->forEachProperty(stop, &calls));
    EXPECT_EQ(calls, 2);
}

TEST(Node, FreesItsPropertiesOnce)
{
    std::vector<int> freed;
    auto branch = aBranch();
    auto leaf = aLeaf();
    branch->addProperty("a", new ForeignValue(11, &freed));
    branch->addProperty("b", new ForeignValue(12, &freed));
    leaf->addProperty("a", new ForeignValue(13, &freed));
    leaf.reset();
    EXPECT_EQ(freed, (std::vector{13}));
    branch.reset();
    EXPECT_EQ(freed, (std::vector{13, 11, 12}));
}

TEST(Node, WalksItsEntitiesInOrderOfAddingAndLeavesThemAlone)
{
    tests::ScopedPool const pool;
    Entities expected;
    for (int i = 0; i < 5; ++i)
        expected.push_back(Point3D::create(0, 1, 2, 3));
    expected.push_back(expected[0]);
    for (Node * const node : {static_cast<Node *>(Branch::create(1, "", Branch::Tag{0})),
                              static_cast<Node *>(Leaf::create(2))}) {
        for (Base * const entity : expected)
            node->addEntity(entity);
        node->addEntity(nullptr);
        EXPECT_EQ(entitiesOf(*node), expected);
        EXPECT_EQ(tests::stoppedAt<Base>(3, *node, &Node::forEachEntity), std::pair(3, false));
        Node::destruct(node);
    }
    EXPECT_EQ(tests::points().size(), 5U);
}

TEST(Node, PassesOverEntitiesThatHaveDied)
{
    tests::ScopedPool const pool;
    auto const leaf = aLeaf();
    Point3D * const dead = Point3D::create(0, 1, 2, 3);
    Point3D * const alive = Point3D::create(0, 1, 2, 3);
    leaf->addEntity(dead);
    leaf->addEntity(alive);
    Point3D::destruct(dead);
    EXPECT_EQ(entitiesOf(*leaf), (Entities{alive}));
}

TEST(Node, WithoutAPoolHasNoEntities)
{
    auto const leaf = aLeaf();
    {
        tests::ScopedPool const pool;
        leaf->addEntity(Point3D::create(0, 1, 2, 3));
    }
    EXPECT_TRUE(entitiesOf(*leaf).empty());
}

TEST(Branch, KeepsACopyOfItsName)
{
    char name[] = "name";
    auto const branch = aBranch(name);
    name[0] = 'X';
    EXPECT_STREQ(branch->getName(), "name");
    char other[] = "another, longer name";
    branch->setName(other);
    other[0] = 'X';
    EXPECT_STREQ(branch->getName(), "another, longer name");
    branch->setName("");
    EXPECT_STREQ(branch->getName(), "");
}

TEST(Branch, KeepsAnyNumberAsItsTag)
{
    for (int const number : {-2147483647 - 1, -1, 0, 1, 2147483647})
        EXPECT_EQ(Owned<Branch>(Branch::create(1, "", Branch::Tag{number}))->getTag(), number);
}

TEST(Branch, WalksItsChildrenInOrderOfAdding)
{
    auto const branch = aBranch();
    std::vector<Node *> const expected{Leaf::create(3), Branch::create(2, "", Branch::Tag{0}),
                                       Leaf::create(1)};
    for (Node * const node : expected)
        branch->addNode(node);
    branch->addNode(nullptr);
    EXPECT_EQ(tests::walked<Node>(*branch, &Branch::forEachNode), expected);
    EXPECT_EQ(tests::stoppedAt<Node>(1, *branch, &Branch::forEachNode), std::pair(1, false));
    EXPECT_EQ(tests::stoppedAt<Node>(2, *branch, &Branch::forEachNode), std::pair(2, false));
}

TEST(Leaf, WalksItsParametersInOrderOfAdding)
{
    auto const leaf = aLeaf();
    std::vector<Parameter *> expected;
    for (int number = 5; number > 0; --number) {
        expected.push_back(Parameter::create(Parameter::Param{number}));
        leaf->addParameter(expected.back());
    }
    leaf->addParameter(nullptr);
    EXPECT_EQ(tests::walked<Parameter>(*leaf, &Leaf::forEachParameter), expected);
    EXPECT_EQ(tests::stoppedAt<Parameter>(1, *leaf, &Leaf::forEachParameter), std::pair(1, false));
}

TEST(Leaf, FreesItsParametersOnce)
{
    std::vector<int> freed;
    auto leaf = aLeaf();
    for (int const type : {11, 12})
        leaf->addParameter(Parameter::create(Parameter::Param{1}, new ForeignValue(type, &freed)));
    EXPECT_TRUE(freed.empty());
    leaf.reset();
    EXPECT_EQ(freed, (std::vector{11, 12}));
}

struct FurtherNodeOperation : Node
{
    virtual void further() {}
};

TEST(Node, TableHoldsItsOperationsThenTheDestructor)
{
    using tests::slotOf;
    EXPECT_EQ(slotOf(&Node::getId), 0U);
    EXPECT_EQ(slotOf(&Node::getType), 1U);
    EXPECT_EQ(slotOf(&Node::addProperty), 2U);
    EXPECT_EQ(slotOf(&Node::forEachProperty), 3U);
    EXPECT_EQ(slotOf(&Node::addEntity), 4U);
    EXPECT_EQ(slotOf(&Node::forEachEntity), 5U);
    EXPECT_EQ(slotOf(&FurtherNodeOperation::further), 8U); // the destructor takes two
}

TEST(Branch, TableGoesOnBehindThatOfNodes)
{
    using tests::slotOf;
    EXPECT_EQ(slotOf(&Branch::getTag), 8U);
    EXPECT_EQ(slotOf(&Branch::setName), 9U);
    EXPECT_EQ(slotOf(&Branch::getName), 10U);
    EXPECT_EQ(slotOf(&Branch::addNode), 11U);
    EXPECT_EQ(slotOf(&Branch::forEachNode), 12U);
}

TEST(Leaf, TableGoesOnBehindThatOfNodes)
{
    EXPECT_EQ(tests::slotOf(&Leaf::addParameter), 8U);
    EXPECT_EQ(tests::slotOf(&Leaf::forEachParameter), 9U);
}

} // namespace
} // namespace transl_tk
