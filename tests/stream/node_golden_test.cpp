#include "stream/product_stream.h"
#include "support/foreign_value.h"

#include <climits>

namespace transl_tk {
namespace {

using namespace tests;

class NodeGolden : public ProductStream
{
protected:
    NodeGolden() { Part::create(1, ""); }

    static NodeTree & tree() { return *part(1)->getNodeTree(); }
    static Branch * branch(int id, int tag, char const * name)
    {
        return Branch::create(id, name, static_cast<Branch::Tag>(tag));
    }
    static Parameter::Param param(int number) { return static_cast<Parameter::Param>(number); }

    static Bytes partWith(std::vector<ByteString> const & nodes)
    {
        return records::model(Parts, {records::part(1, "", nodes)});
    }
    static Bytes pointAndPartWith(std::vector<ByteString> const & nodes)
    {
        return records::model(
            {{Points, {records::point(5)}}, {Parts, {records::part(1, "", nodes)}}});
    }

    static std::vector<Node *> below(Node * node)
    {
        return childrenOf(static_cast<Branch *>(node), &Branch::forEachNode);
    }

    static Parameter * onlyParameter(Node * leaf)
    {
        return childrenOf(static_cast<Leaf *>(leaf), &Leaf::forEachParameter).at(0);
    }
};

TEST_F(NodeGolden, ABranchHasEveryFieldInItsPlace)
{
    Branch * const node = branch(10, 33, "sketch");
    node->addNode(Leaf::create(11));
    node->addEntity(Point3D::create(5, 1, 2, 3));
    node->addProperty("key", IValue::create("v"));
    tree().addNode(node);
    ByteString record;
    record.i32(10).i32(1).i32(33).text("sketch");
    record.i32(1).i32(11).i32(2).i32(0).i32(0).i32(0);
    record.i32(2).i32(5).i32(9);
    record.i32(1).text("key").i32(1).text("v");
    constexpr std::size_t Inner = 4 + 8 + 4 + 4;
    ASSERT_EQ(record.bytes().size(), 4U + 8 + (4 + 3 + 8 + 1) + 4 + 8 + 12 + 6 + Inner);
    expectTravelsAs(pointAndPartWith({record}));
    auto * const read = static_cast<Branch *>(nodesOf(part(1)).at(0));
    EXPECT_EQ(read->getId(), 10);
    EXPECT_EQ(read->getType(), 1);
    EXPECT_EQ(read->getTag(), 33);
    EXPECT_STREQ(read->getName(), "sketch");
    EXPECT_EQ(below(read).at(0)->getId(), 11);
}

TEST_F(NodeGolden, ALeafHasEveryFieldInItsPlace)
{
    Leaf * const node = Leaf::create(20);
    Parameter * const mixed = Parameter::create(param(44));
    mixed->addValue(IValue::create(7));
    mixed->addValue(IValue::create("s"));
    node->addParameter(mixed);
    node->addParameter(Parameter::create(param(-45), 1, 2, 3));
    node->addEntity(Point3D::create(5, 1, 2, 3));
    node->addProperty("p", IValue::create(true));
    tree().addNode(node);
    ByteString record;
    record.i32(20).i32(2).i32(2);
    record.i32(44).i32(2).i32(2).i32(7).i32(1).text("s");
    record.i32(-45).i32(3).i32(5).f64({1}).i32(5).f64({2}).i32(5).f64({3});
    record.i32(2).i32(5).i32(9);
    record.i32(1).text("p").i32(3).u8(1);
    ASSERT_EQ(record.bytes().size(),
              4U + 8 + (4 + 1 + 5) + (4 + 8) + (8 + 8 + 9) + (8 + 3 * 12) + 4);
    expectTravelsAs(pointAndPartWith({record}));
    Node * const read = nodesOf(part(1)).at(0);
    EXPECT_EQ(read->getType(), 2);
    EXPECT_EQ(onlyParameter(read)->getParam(), 44);
    EXPECT_EQ(entitiesOf(*read), (std::vector<Base *>{entity<Base>(&SubPool::m_Points, 5)}));
}

TEST_F(NodeGolden, ALeafUnderTwoBranchesStandsOnceInFullAndOnceAsItsIdAndArrivesAsOneObject)
{
    Leaf * const shared = Leaf::create(30);
    shared->addParameter(Parameter::create(param(1), IValue::create(2)));
    for (int const id : {10, 20}) {
        Branch * const holder = branch(id, 0, "b");
        holder->addNode(shared);
        tree().addNode(holder);
    }
    ByteString const leaf = records::leaf(30, {records::parameter(1, {records::intValue(2)})});
    expectTravelsAs(partWith(
        {records::branch(10, 0, "b", {leaf}), records::branch(20, 0, "b", {records::again(30)})}));
    std::vector<Node *> const top = nodesOf(part(1));
    EXPECT_EQ(below(top.at(0)).at(0), below(top.at(1)).at(0));
}

TEST_F(NodeGolden, ANodeThatHangsTwiceAnywhereIsItsIdTheSecondTime)
{
    Branch * const outer = branch(1, 0, "");
    Branch * const inner = branch(2, 0, "");
    outer->addNode(inner);
    outer->addNode(inner);
    tree().addNode(outer);
    tree().addNode(inner);
    tree().addNode(outer);
    expectTravelsAs(
        partWith({records::branch(1, 0, "", {records::branch(2, 0, ""), records::again(2)}),
                  records::again(2), records::again(1)}));
    std::vector<Node *> const top = nodesOf(part(1));
    EXPECT_EQ(top.at(0), top.at(2));
    EXPECT_EQ(below(top.at(0)), (std::vector<Node *>{top.at(1), top.at(1)}));
}

TEST_F(NodeGolden, TwoNodesOfOneIdInOnePartAreTakenForOne)
{
    tree().addNode(Leaf::create(3));
    tree().addNode(branch(3, 1, "lost"));
    expectWrittenAs(partWith({records::leaf(3), records::again(3)}));
}

TEST_F(NodeGolden, ANodeSharedByTwoPartsIsWrittenInFullInBothAndArrivesAsTwo)
{
    Branch * const shared = branch(7, 1, "shared");
    tree().addNode(shared);
    Part::create(2, "second")->getNodeTree()->addNode(shared);
    ByteString const node = records::branch(7, 1, "shared");
    expectTravelsAs(
        records::model(Parts, {records::part(1, "", {node}), records::part(2, "second", {node})}));
    EXPECT_NE(nodesOf(part(1)).at(0), nodesOf(part(2)).at(0));
}

TEST_F(NodeGolden, TopNodesAndChildrenKeepTheOrderOfAdding)
{
    Branch * const top = branch(5, 0, "");
    for (int const id : {9, -4, 6})
        top->addNode(Leaf::create(id));
    tree().addNode(Leaf::create(8));
    tree().addNode(top);
    tree().addNode(Leaf::create(INT_MIN));
    expectTravelsAs(partWith(
        {records::leaf(8),
         records::branch(5, 0, "", {records::leaf(9), records::leaf(-4), records::leaf(6)}),
         records::leaf(INT_MIN)}));
}

TEST_F(NodeGolden, ABranchsAttachmentsAndPropertiesStandBehindAllThatIsBelowIt)
{
    Branch * const top = branch(1, 2, "top");
    Branch * const inner = branch(3, 4, "inner");
    inner->addNode(Leaf::create(5));
    inner->addProperty("inner", nullptr);
    top->addNode(inner);
    top->addProperty("top", IValue::create(6));
    tree().addNode(top);
    ByteString record;
    record.i32(1).i32(1).i32(2).text("top").i32(1);
    record.i32(3).i32(1).i32(4).text("inner").i32(1);
    record.i32(5).i32(2).i32(0).i32(0).i32(0);
    record.i32(0).i32(1).text("inner").i32(0);
    record.i32(0).i32(1).text("top").i32(2).i32(6);
    expectTravelsAs(partWith({record}));
}

TEST_F(NodeGolden, TagsAndNumbersPassThroughUntouched)
{
    for (int const number : {INT_MIN, -1, 0, INT_MAX}) {
        currentSubPool().clear();
        Part::create(1, "");
        Leaf * const leaf = Leaf::create(7);
        leaf->addParameter(Parameter::create(param(number)));
        Branch * const holder = branch(number, number, "\xff<");
        holder->addNode(leaf);
        tree().addNode(holder);
        ByteString const inner = records::leaf(7, {records::parameter(number, {})});
        expectTravelsAs(partWith({records::branch(number, number, "\xff<", {inner})}));
    }
}

TEST_F(NodeGolden, ANullValueIsABareTagOfFourBytes)
{
    Leaf * const leaf = Leaf::create(1);
    leaf->addProperty("", nullptr);
    leaf->addParameter(Parameter::create(param(2), static_cast<IValue *>(nullptr)));
    tree().addNode(leaf);
    ByteString record;
    record.i32(1).i32(2).i32(1).i32(2).i32(1).i32(0).i32(0).i32(1).text("").i32(0);
    expectTravelsAs(partWith({record}));
    EXPECT_EQ(onlyParameter(nodesOf(part(1)).at(0))->getValue(0), nullptr);
}

TEST_F(NodeGolden, UnknownTagsReadAsNullAndTheReaderStaysInStep)
{
    ByteString const unknown = ByteString().i32(7);
    currentSubPool().clear();
    read(partWith({records::leaf(1, {records::parameter(2, {unknown, records::intValue(3)})}, {},
                                 {records::property("a", unknown)}),
                   records::leaf(2)}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    ByteString const none = ByteString().i32(0);
    expectWrittenAs(
        partWith({records::leaf(1, {records::parameter(2, {none, records::intValue(3)})}, {},
                                {records::property("a", none)}),
                  records::leaf(2)}));
}

TEST_F(NodeGolden, ReferencesToUVCurvesAreWrittenAndCountedButNeverAttach)
{
    Leaf * const leaf = Leaf::create(1);
    leaf->addEntity(makeUVCurve(5));
    leaf->addEntity(part(1));
    tree().addNode(leaf);
    auto const bytes =
        records::model({{UVCurves, {ByteString().i32(5).i32(3).raw(records::uvCurve())}},
                        {Parts, {records::part(1, "", {records::leaf(1, {}, {{5, 3}, {1, 7}})})}}});
    expectWrittenAs(bytes);
    currentSubPool().clear();
    read(bytes);
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_EQ(entitiesOf(*nodesOf(part(1)).at(0)), (std::vector<Base *>{part(1)}));
}

TEST_F(NodeGolden, ReferencesToInstancesAndLaterPartsAreWrittenAndCountedButNeverAttach)
{
    Leaf * const leaf = Leaf::create(1);
    leaf->addEntity(Instance::create(5, part(1)));
    leaf->addEntity(Part::create(2, "later"));
    leaf->addEntity(Assembly::create(3, "any"));
    tree().addNode(leaf);
    auto const bytes =
        records::model({{Assemblies, {records::assembly(3, "any", {})}},
                        {Parts,
                         {records::part(1, "", {records::leaf(1, {}, {{5, 7}, {2, 7}, {3, 7}})}),
                          records::part(2, "later")}},
                        {Instances, {records::instance(5, 1)}}});
    expectWrittenAs(bytes);
    currentSubPool().clear();
    read(bytes);
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_EQ(entitiesOf(*nodesOf(part(1)).at(0)), (std::vector<Base *>{assembly(3)}));
}

TEST_F(NodeGolden, AnEntityThatDiedIsWrittenByNobody)
{
    Leaf * const leaf = Leaf::create(1);
    leaf->addEntity(Point3D::create(4, 1, 2, 3));
    leaf->addEntity(Point3D::create(5, 1, 2, 3));
    tree().addNode(leaf);
    Point3D::destruct(entity<Point3D>(&SubPool::m_Points, 4));
    expectTravelsAs(pointAndPartWith({records::leaf(1, {}, {{5, 9}})}));
}

TEST_F(NodeGolden, OfTwoPropertiesOfOneNameInAStreamTheFirstStays)
{
    currentSubPool().clear();
    read(partWith({records::leaf(1, {}, {},
                                 {records::property("a", records::intValue(1)),
                                  records::property("a", records::textValue("freed"))})}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    expectWrittenAs(
        partWith({records::leaf(1, {}, {}, {records::property("a", records::intValue(1))})}));
}

TEST_F(NodeGolden, AFloatOfATreeIsReadFromAStream)
{
    currentSubPool().clear();
    read(partWith({records::leaf(1, {records::parameter(2, {records::floatValue(2.5F)})})}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    float number = 0;
    onlyParameter(nodesOf(part(1)).at(0))->getValue(0)->getValue(number);
    EXPECT_EQ(number, 2.5F);
}

} // namespace
} // namespace transl_tk
