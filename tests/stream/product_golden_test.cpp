#include "stream/product_stream.h"
#include "support/report_capture.h"

#include <keld-transl/product/units.h>

#include <cstring>
#include <limits>

namespace transl_tk {
namespace {

using namespace tests;

class ProductGolden : public ProductStream
{
protected:
    static Units * units(int lengthType, double lengthScale, int angularType, double angularScale)
    {
        return Units::create(static_cast<Units::LengthType>(lengthType),
                             static_cast<Units::AngularType>(angularType), lengthScale,
                             angularScale);
    }
    static std::vector<double> identityNumbers()
    {
        return {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1};
    }
    static std::vector<double> someNumbers()
    {
        return {1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12, 13, 14, 15, 16.5};
    }
    static std::vector<double> transformOf(Hierarchy * hierarchy)
    {
        std::vector<double> numbers(16);
        hierarchy->getTransform(numbers.data());
        return numbers;
    }
};

TEST_F(ProductGolden, AnAssemblyHasEveryFieldInItsPlace)
{
    Assembly * const top = Assembly::create(5, "top");
    top->setFirstLabel("label one");
    top->setSecondLabel("two");
    top->setUnits(units(2, 0.5, 9, 0.25));
    top->setTransform(someNumbers().data());
    Part * const part = Part::create(9, "p");
    top->addChild(Instance::create(7, part));
    top->addChild(Instance::create(6, part));

    ByteString record;
    record.i32(5).text("top").text("label one").text("two");
    record.i32(2).f64({0.5}).i32(2).f64({0.25});
    record.u8(0).f64(someNumbers());
    record.i32(2).i32(7).i32(6);
    ASSERT_EQ(record.bytes().size(), 41U + 128 + 3 + 9 + 3 + 4 * (2 + 1));
    expectTravelsAs(
        records::model({{Assemblies, {record}},
                        {Parts, {records::part(9, "p")}},
                        {Instances, {records::instance(6, 9), records::instance(7, 9)}}}));
    EXPECT_STREQ(assembly(5)->getName(), "top");
    EXPECT_STREQ(assembly(5)->getSecondLabel(), "two");
    EXPECT_EQ(assembly(5)->getUnits()->getLengthScale(), 0.5);
    EXPECT_EQ(assembly(5)->getUnits()->getAngularScale(), 0.25);
    EXPECT_EQ(transformOf(assembly(5)), someNumbers());
    EXPECT_EQ(childIds(assembly(5)), (std::vector<int>{7, 6}));
    EXPECT_EQ(instance(7)->getParent(), assembly(5));
}

TEST_F(ProductGolden, APartHasEveryFieldInItsPlace)
{
    Part * const part = Part::create(4, "name");
    part->setFirstLabel("a");
    part->setSecondLabel("bc");
    part->setPartLabel("def");
    part->setUnits(units(3, 2, 1, 4));
    part->setTransform(someNumbers().data());
    part->getNodeTree()->addNode(Leaf::create(70));
    part->addBody(Body::create(11, ""));
    part->addPoint(Point3D::create(12, 1, 2, 3));
    part->addPoint(Point3D::create(10, 1, 2, 3));
    part->addSpotWeld(SpotWeld::create(13, 1, 2, 3));
    double const third[3] = {-3, 6, -3};
    part->addCartesianCoord(CartesianCoord::create(14, L, A, B, third));
    part->addTriStrip(makeStrip(15));
    part->addCurve(makeCurve(16));
    part->addEdge(Edge::create(17, nullptr, nullptr, nullptr, true));
    part->addAnnotation(makeAnnotation(18));

    ByteString record;
    record.i32(4).text("name").text("a").text("bc").text("def");
    record.i32(3).f64({2}).i32(3).f64({4});
    record.i32(1).raw(records::leaf(70));
    record.u8(0).f64(someNumbers());
    record.i32(1).i32(11).i32(2).i32(12).i32(10).i32(1).i32(13).i32(1).i32(14);
    record.i32(1).i32(15).i32(1).i32(16).i32(1).i32(17).i32(1).i32(18);
    // The leaf: its id, 8, no properties, no entities, no parameters.
    ASSERT_EQ(record.bytes().size(), 45U + 128 + 4 + 1 + 2 + 3 + 4 * (9 + 8) + 4 + (4 + 8 + 4 + 4));
    expectTravelsAs(
        records::model({{Facets, {records::bareStrip(15)}},
                        {Points, {records::point(10), records::point(12)}},
                        {SpotWelds, {ByteString().i32(13).f64({1, 2, 3}).i32(0)}},
                        {CoordinateSystems, {ByteString().i32(14).raw(records::placement())}},
                        {Curves, {records::carried(16, records::line())}},
                        {Edges, {records::edge(17, -1, -1, -1)}},
                        {Bodies, {records::body(11, "", {}, {})}},
                        {Annotations, {records::annotation(18)}},
                        {Parts, {record}}}));

    Part * const read = ProductStream::part(4);
    EXPECT_STREQ(read->getPartLabel(), "def");
    EXPECT_EQ(idsOf(read, &Part::forEachBody), (std::vector<int>{11}));
    EXPECT_EQ(idsOf(read, &Part::forEachPoint), (std::vector<int>{12, 10}));
    EXPECT_EQ(idsOf(read, &Part::forEachSpotWeld), (std::vector<int>{13}));
    EXPECT_EQ(idsOf(read, &Part::forEachCartesianCoord), (std::vector<int>{14}));
    EXPECT_EQ(idsOf(read, &Part::forEachTriStrip), (std::vector<int>{15}));
    EXPECT_EQ(idsOf(read, &Part::forEachCurve), (std::vector<int>{16}));
    EXPECT_EQ(idsOf(read, &Part::forEachEdge), (std::vector<int>{17}));
    EXPECT_EQ(idsOf(read, &Part::forEachAnnotation), (std::vector<int>{18}));
    EXPECT_EQ(nodesOf(read).size(), 1U);
}

TEST_F(ProductGolden, ABarePartHasEmptyListsAndAnEmptyTree)
{
    Part::create(1, "");
    ByteString record;
    record.i32(1).zeros(16).i32(1).f64({1}).i32(1).f64({1}).i32(0).u8(1).zeros(32);
    ASSERT_EQ(record.bytes().size(), 45U + 4 * 8 + 4);
    expectTravelsAs(records::model(Parts, {record}));
    ASSERT_NE(part(1)->getNodeTree(), nullptr);
    EXPECT_TRUE(nodesOf(part(1)).empty());
}

TEST_F(ProductGolden, AnInstanceHasEveryFieldInItsPlace)
{
    Instance::create(8, Assembly::create(3, "a"));
    Instance::create(2, Part::create(4, "p"))->setTransform(someNumbers().data());
    ByteString moved;
    moved.i32(2).i32(4).u8(0).f64(someNumbers());
    ASSERT_EQ(moved.bytes().size(), 9U + 128);
    ByteString unmoved;
    unmoved.i32(8).i32(3).u8(1);
    expectTravelsAs(records::model({{Assemblies, {records::assembly(3, "a", {})}},
                                    {Parts, {records::part(4, "p")}},
                                    {Instances, {moved, unmoved}}}));
    EXPECT_EQ(instance(2)->getComponent(), part(4));
    EXPECT_EQ(instance(8)->getComponent(), assembly(3));
    EXPECT_EQ(childrenOf<Component>(assembly(3), &Component::forEachInstance),
              (std::vector<Instance *>{instance(8)}));
    EXPECT_EQ(transformOf(instance(2)), someNumbers());
}

TEST_F(ProductGolden, AssembliesPartsAndInstancesStandApartEachInAscendingOrderOfIds)
{
    Part * const part = Part::create(20, "a");
    Assembly::create(30, "b");
    Instance::create(15, part);
    Part::create(-5, "c");
    Assembly::create(10, "d");
    Instance::create(7, part);
    expectTravelsAs(records::model(
        {{Assemblies, {records::assembly(10, "d", {}), records::assembly(30, "b", {})}},
         {Parts, {records::part(-5, "c"), records::part(20, "a")}},
         {Instances, {records::instance(7, 20), records::instance(15, 20)}}}));
}

TEST_F(ProductGolden, AssembliesAndPartsInsideAssembliesAreLinkedWhereverTheyStand)
{
    Assembly * const outer = Assembly::create(9, "outer");
    Assembly * const inner = Assembly::create(3, "inner");
    Part * const part = Part::create(1, "part");
    outer->addChild(part);
    outer->addChild(inner);
    expectTravelsAs(records::model(
        {{Assemblies, {records::assembly(3, "inner", {}), records::assembly(9, "outer", {1, 3})}},
         {Parts, {records::part(1, "part")}}}));
    EXPECT_EQ(assembly(3)->getParent(), assembly(9));
    EXPECT_EQ(ProductStream::part(1)->getParent(), assembly(9));
}

TEST_F(ProductGolden, TheLengthTypeIsWrittenAsTheAngularTypeAndArrivesAsIt)
{
    Part::create(1, "")->setUnits(units(3, 1, 1, 1));
    Assembly::create(2, "@@")->setUnits(units(14, 1, 2, 1));
    ByteString inches;
    inches.i32(1).zeros(16).i32(3).f64({1}).i32(3).f64({1}).i32(0).u8(1).zeros(32);
    ByteString angstroms;
    angstroms.i32(2).text("@@").zeros(8).i32(14).f64({1}).i32(14).f64({1}).u8(1).i32(0);
    expectTravelsAs(records::model({{Assemblies, {angstroms}}, {Parts, {inches}}}));
    EXPECT_EQ(part(1)->getUnits()->getLengthType(), 3);
    EXPECT_EQ(part(1)->getUnits()->getAngularType(), 3);
    EXPECT_EQ(assembly(2)->getUnits()->getAngularType(), 14);
}

TEST_F(ProductGolden, AnAngularTypeOfAForeignStreamIsTakenAsItStands)
{
    ByteString record;
    record.i32(1).zeros(16).i32(-7).f64({1}).i32(99).f64({1}).i32(0).u8(1).zeros(32);
    read(records::model(Parts, {record}));
    EXPECT_EQ(part(1)->getUnits()->getLengthType(), -7);
    EXPECT_EQ(part(1)->getUnits()->getAngularType(), 99);
}

TEST_F(ProductGolden, ANegativeZeroInTheIdentityStillMakesTheIdentity)
{
    std::vector<double> numbers = identityNumbers();
    numbers[7] = -0.0;
    Part::create(1, "")->setTransform(numbers.data());
    Instance::create(2, part(1))->setTransform(numbers.data());
    expectTravelsAs(
        records::model({{Parts, {records::part(1, "")}}, {Instances, {records::instance(2, 1)}}}));
    EXPECT_EQ(transformOf(part(1)), identityNumbers());
}

TEST_F(ProductGolden, ANaNAndTheSmallestDifferenceMakeNoIdentity)
{
    double const oddOnes[] = {std::numeric_limits<double>::quiet_NaN(),
                              std::numeric_limits<double>::denorm_min()};
    for (double const odd : oddOnes) {
        currentSubPool().clear();
        std::vector<double> numbers = identityNumbers();
        numbers[14] = odd;
        Assembly::create(1, "")->setTransform(numbers.data());
        ByteString record;
        record.i32(1).zeros(12).raw(records::millimetres());
        record.raw(records::transform(numbers)).i32(0);
        expectTravelsAs(records::model(Assemblies, {record}));
    }
}

TEST_F(ProductGolden, AnyFlagButZeroStandsForTheIdentity)
{
    ByteString record;
    record.i32(1).zeros(16).raw(records::millimetres()).i32(0).u8(200).zeros(32);
    read(records::model(Parts, {record}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_EQ(transformOf(part(1)), identityNumbers());
}

TEST_F(ProductGolden, AnIdentityThatIsWrittenOutArrivesAsIdentity)
{
    ByteString record;
    record.i32(1).zeros(16).raw(records::millimetres()).i32(0);
    record.raw(records::transform(identityNumbers())).zeros(32);
    read(records::model(Parts, {record}));
    expectWrittenAs(records::model(Parts, {records::part(1, "")}));
}

TEST_F(ProductGolden, AChildThatIsNotInTheStreamIsLeftOutWithoutAWord)
{
    ReportCapture const report;
    read(records::model(Assemblies, {records::assembly(1, "a", {77})}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_TRUE(childIds(assembly(1)).empty());
    EXPECT_EQ(report.text(), "");
}

TEST_F(ProductGolden, ContentsThatAreNotInTheStreamAreLeftOut)
{
    read(records::model(
        {{Points, {records::point(1)}},
         {Parts, {records::part(1, "", {}, {{{9}, {8, 1, -1}, {9}, {9}, {9}, {9}, {9}, {9}}})}}}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    expectWrittenAs(
        records::model({{Points, {records::point(1)}},
                        {Parts, {records::part(1, "", {}, {{{}, {1}, {}, {}, {}, {}, {}, {}}})}}}));
}

TEST_F(ProductGolden, OfTwoChildrenWithOneOrderNumberAfterARemovalOneIsLeftOut)
{
    Assembly * const top = Assembly::create(1, "");
    Part * const part = Part::create(2, "p");
    for (int const id : {11, 12, 13})
        top->addChild(Instance::create(id, part));
    top->removeChild(instance(11));
    // 12 and 13 have the numbers 1 and 2; the next one gets 2 as well.
    top->addChild(Instance::create(14, part));
    expectWrittenAs(records::model({{Assemblies, {records::assembly(1, "", {12, 13})}},
                                    {Parts, {records::part(2, "p")}},
                                    {Instances,
                                     {records::instance(11, 2), records::instance(12, 2),
                                      records::instance(13, 2), records::instance(14, 2)}}}));
}

TEST_F(ProductGolden, NamesAndLabelsPassThroughUntouched)
{
    std::string const odd = "<b>\x01\x7f\xff\xc3 &amp; \"\n\t@7";
    Part * const part = Part::create(1, odd.c_str());
    part->setFirstLabel(odd.c_str());
    part->setPartLabel("\xff");
    ByteString record;
    record.i32(1).text(odd).text(odd).text("").text("\xff").raw(records::millimetres());
    expectTravelsAs(records::model(Parts, {record.i32(0).u8(1).zeros(32)}));
    EXPECT_EQ(ProductStream::part(1)->getFirstLabel(), odd);
}

TEST_F(ProductGolden, ANameThatTheModelHasAlreadyIsNumbered)
{
    Part::create(5, "door");
    read(records::model(Parts, {records::part(1, "door"), records::part(2, "wall")}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_STREQ(part(1)->getName(), "door@1");
    EXPECT_STREQ(part(2)->getName(), "wall");
}

TEST_F(ProductGolden, WhatDiedSinceItWasListedIsWrittenByNobody)
{
    Part * const holder = Part::create(1, "");
    holder->addPoint(Point3D::create(4, 1, 2, 3));
    holder->addPoint(Point3D::create(5, 1, 2, 3));
    Point3D::destruct(entity<Point3D>(&SubPool::m_Points, 4));
    expectTravelsAs(
        records::model({{Points, {records::point(5)}},
                        {Parts, {records::part(1, "", {}, {{{}, {5}, {}, {}, {}, {}, {}, {}}})}}}));
}

TEST_F(ProductGolden, AnAssemblyThatIsItsOwnDescendantHasNoSizeAndOneErrorLine)
{
    Assembly * const outer = Assembly::create(1, "outer");
    Assembly * const inner = Assembly::create(2, "inner");
    outer->addChild(inner);
    inner->addChild(outer);
    Server::echo_start(StreamPolicy::StreamOnly, "");
    testing::internal::CaptureStderr();
    EXPECT_EQ(Pool::getInstance()->getSize(), 0);
    std::string const error = testing::internal::GetCapturedStderr();
    Server::echo_end();
    EXPECT_TRUE(error == "    Error : The assembly \"outer\" is its own descendant; such a model "
                         "cannot be exchanged.\n" ||
                error == "    Error : The assembly \"inner\" is its own descendant; such a model "
                         "cannot be exchanged.\n")
        << error;
}

TEST_F(ProductGolden, AnAssemblyThatIsItsOwnDescendantIsNotWrittenAndTheFailureSaysWhy)
{
    Assembly * const outer = Assembly::create(1, "outer");
    Assembly * const inner = Assembly::create(2, "inner");
    outer->addChild(inner);
    inner->addChild(outer);
    std::string const name = segmentName();
    EXPECT_EQ(Server::writeSharedMem(name), 0);
    EXPECT_TRUE(segmentBytes(name).empty());
    EXPECT_NE(Server::exchangeFailure().find("is its own descendant; such a model cannot be "
                                             "exchanged."),
              std::string::npos)
        << Server::exchangeFailure();
}

} // namespace
} // namespace transl_tk
