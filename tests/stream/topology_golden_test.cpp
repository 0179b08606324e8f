#include "stream/topology_stream.h"

namespace transl_tk {
namespace {

using namespace tests;
using Ids = std::vector<int>;

class GoldenTopology : public TopologyStream
{
protected:
    /// Writes the model and expects `written`; then reads that and expects to write `arrived`.
    void expectArrivesAs(Bytes const & written, Bytes const & arrived)
    {
        expectWrittenAs(written);
        currentSubPool().clear();
        read(written);
        EXPECT_EQ(Server::exchangeFailure(), "");
        expectWrittenAs(arrived);
    }

    static ByteString lineCarrier(int id) { return records::carried(id, records::line()); }
    static ByteString planeCarrier(int id) { return records::carried(id, records::plane()); }
    static ByteString uvCarrier(int id)
    {
        return ByteString().i32(id).i32(3).raw(records::uvCurve());
    }
};

TEST_F(GoldenTopology, VertexWithAPointTakes29Bytes)
{
    Vertex::create(7, geom::Point::create(1, 2, -3));
    ByteString record;
    record.i32(7).u8(1).f64({1, 2, -3});
    EXPECT_EQ(record.bytes().size(), 29U);
    expectTravelsAs(records::model({{Vertices, {record}}}));
    geom::Point * point = nullptr;
    double parameter = 1.0;
    vertex(7)->getGeometry(point, parameter);
    ASSERT_NE(point, nullptr);
    Triple position{};
    point->getCoordinates(position[0], position[1], position[2]);
    EXPECT_EQ(position, (Triple{1, 2, -3}));
}

TEST_F(GoldenTopology, VertexWithAParameterTakes13Bytes)
{
    Vertex::create(7, 0.75);
    ByteString record;
    record.i32(7).u8(0).f64({0.75});
    EXPECT_EQ(record.bytes().size(), 13U);
    expectTravelsAs(records::model({{Vertices, {record}}}));
    geom::Point * point = nullptr;
    double parameter = 0.0;
    vertex(7)->getGeometry(point, parameter);
    EXPECT_EQ(point, nullptr);
    EXPECT_EQ(parameter, 0.75);
}

TEST_F(GoldenTopology, AnyByteButZeroSaysThatAVertexHasAPoint)
{
    read(records::model({{Vertices,
                          {ByteString().i32(7).u8(2).f64({1, 2, 3}),
                           ByteString().i32(8).u8(255).f64({4, 5, 6})}}}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    expectWrittenAs(records::model(
        {{Vertices, {records::vertex(7, {1, 2, 3}), records::vertex(8, {4, 5, 6})}}}));
}

TEST_F(GoldenTopology, EdgeIsCurveStartEndAndThenSense)
{
    Edge::create(5, makeCurve(2), makeVertex(3), Vertex::create(4, 0.5), true);
    ByteString record;
    record.i32(5).i32(2).i32(3).i32(4).u8(1);
    EXPECT_EQ(record.bytes().size(), 17U);
    expectTravelsAs(
        records::model({{Curves, {lineCarrier(2)}},
                        {Vertices, {records::vertex(3, {1, 2, 3}), records::vertex(4, 0.5)}},
                        {Edges, {record}}}));
    EXPECT_EQ(edge(5)->getCurve(), carrierOfCurve(2));
    EXPECT_EQ(edge(5)->getStartVertex(), vertex(3));
    EXPECT_EQ(edge(5)->getEndVertex(), vertex(4));
    EXPECT_TRUE(edge(5)->getSense());
}

TEST_F(GoldenTopology, EdgeWithoutAnythingHasMinusOnes)
{
    Edge::create(5, nullptr, nullptr, nullptr, false);
    ByteString record;
    record.i32(5).i32(-1).i32(-1).i32(-1).u8(0);
    expectTravelsAs(records::model({{Edges, {record}}}));
    EXPECT_EQ(edge(5)->getCurve(), nullptr);
    EXPECT_EQ(edge(5)->getStartVertex(), nullptr);
    EXPECT_EQ(edge(5)->getEndVertex(), nullptr);
    EXPECT_FALSE(edge(5)->getSense());
}

TEST_F(GoldenTopology, AClosedEdgeNamesItsVertexTwice)
{
    Vertex * const both = makeVertex(3);
    Edge::create(5, nullptr, both, both, true);
    expectTravelsAs(records::model(
        {{Vertices, {records::vertex(3, {1, 2, 3})}}, {Edges, {records::edge(5, -1, 3, 3)}}}));
    EXPECT_EQ(edge(5)->getStartVertex(), edge(5)->getEndVertex());
    Edge::destruct(edge(5));
    EXPECT_EQ(vertex(3), nullptr);
}

TEST_F(GoldenTopology, WhatEdgesShareLivesAsLongAsTheLastOfThem)
{
    Curve3D * const curve = makeCurve(2);
    Edge::create(5, curve, nullptr, nullptr, true);
    Edge::create(6, curve, nullptr, nullptr, true);
    expectTravelsAs(
        records::model({{Curves, {lineCarrier(2)}},
                        {Edges, {records::edge(5, 2, -1, -1), records::edge(6, 2, -1, -1)}}}));
    Edge::destruct(edge(5));
    EXPECT_NE(carrierOfCurve(2), nullptr);
    Edge::destruct(edge(6));
    EXPECT_EQ(carrierOfCurve(2), nullptr);
}

TEST_F(GoldenTopology, WhatAnEdgeNamesAndTheStreamDoesNotHoldIsNull)
{
    read(records::model(
        {{Vertices, {records::vertex(3, 0.5)}}, {Edges, {records::edge(5, 2, 3, 4, false)}}}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    expectWrittenAs(records::model(
        {{Vertices, {records::vertex(3, 0.5)}}, {Edges, {records::edge(5, -1, 3, -1, false)}}}));
}

TEST_F(GoldenTopology, MinusOneIsNobodyEvenWhereAnEntityHasThatId)
{
    makeVertex(-1);
    read(records::model({{Edges, {records::edge(5, -1, -1, -1)}}}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_EQ(edge(5)->getStartVertex(), nullptr);
}

TEST_F(GoldenTopology, FinIsSenseAndThenEdgeAndUVCurve)
{
    Fin::create(9, Edge::create(5, nullptr, nullptr, nullptr, false), true)
        ->setUVCurve(makeUVCurve(6));
    ByteString record;
    record.i32(9).u8(1).i32(5).i32(6);
    EXPECT_EQ(record.bytes().size(), 13U);
    expectTravelsAs(records::model({{UVCurves, {uvCarrier(6)}},
                                    {Edges, {records::edge(5, -1, -1, -1, false)}},
                                    {Fins, {record}}}));
    EXPECT_TRUE(fin(9)->getSense());
    EXPECT_EQ(fin(9)->getEdge(), edge(5));
    EXPECT_EQ(fin(9)->getUVCurve(), carrierOfUVCurve(6));
}

TEST_F(GoldenTopology, FinWithoutAnythingHasMinusOnes)
{
    Fin::create(9, nullptr, false);
    ByteString record;
    record.i32(9).u8(0).i32(-1).i32(-1);
    expectTravelsAs(records::model({{Fins, {record}}}));
    EXPECT_FALSE(fin(9)->getSense());
    EXPECT_EQ(fin(9)->getEdge(), nullptr);
    EXPECT_EQ(fin(9)->getUVCurve(), nullptr);
}

TEST_F(GoldenTopology, WhatAFinNamesAndTheStreamDoesNotHoldIsNull)
{
    read(records::model({{Fins, {records::fin(9, 5, 6)}}}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    expectWrittenAs(records::model({{Fins, {records::fin(9, -1, -1)}}}));
}

TEST_F(GoldenTopology, LoopIsACountOfFinsInTheOrderInWhichTheyWereAdded)
{
    Loop * const made = Loop::create(4);
    for (int const id : {8, 2, 9, 3, 7})
        made->addFin(Fin::create(id, nullptr, true));
    std::vector<ByteString> fins;
    for (int const id : {2, 3, 7, 8, 9})
        fins.push_back(records::fin(id, -1));
    ByteString record;
    record.i32(4).i32(5).i32(8).i32(2).i32(9).i32(3).i32(7);
    expectTravelsAs(records::model({{Fins, fins}, {Loops, {record}}}));
    EXPECT_EQ(idsOf(loop(4), &Loop::forEachFin), (Ids{8, 2, 9, 3, 7}));
}

TEST_F(GoldenTopology, AnEmptyLoopTakes8Bytes)
{
    Loop::create(4);
    ByteString record;
    record.i32(4).i32(0);
    expectTravelsAs(records::model({{Loops, {record}}}));
    EXPECT_TRUE(childrenOf(loop(4), &Loop::forEachFin).empty());
}

TEST_F(GoldenTopology, FaceIsLabelSenseSurfaceAndLoops)
{
    Face * const made = Face::create(3, makeSurface(6));
    made->setLabel("top");
    made->setSense(true);
    made->addLoop(Loop::create(2));
    made->addLoop(Loop::create(1));
    ByteString record;
    record.i32(3).i32(3).u8('t').u8('o').u8('p').u8(1).i32(6).i32(2).i32(2).i32(1);
    EXPECT_EQ(record.bytes().size(), 17U + 3U + 4U * 2U);
    expectTravelsAs(records::model({{Surfaces, {planeCarrier(6)}},
                                    {Loops, {records::loop(1, {}), records::loop(2, {})}},
                                    {Faces, {record}}}));
    EXPECT_STREQ(face(3)->getLabel(), "top");
    EXPECT_TRUE(face(3)->getSense());
    EXPECT_EQ(face(3)->getSurface(), carrierOfSurface(6));
    EXPECT_EQ(idsOf(face(3), &Face::forEachLoop), (Ids{2, 1}));
}

TEST_F(GoldenTopology, FaceWithAnEmptyLabelHasALengthOfZeroAndNoBytes)
{
    Face * const made = Face::create(3, nullptr);
    made->setSense(false);
    ByteString record;
    record.i32(3).i32(0).u8(0).i32(-1).i32(0);
    EXPECT_EQ(record.bytes().size(), 17U);
    expectTravelsAs(records::model({{Faces, {record}}}));
    EXPECT_STREQ(face(3)->getLabel(), "");
    EXPECT_FALSE(face(3)->getSense());
    EXPECT_EQ(face(3)->getSurface(), nullptr);
}

TEST_F(GoldenTopology, ALabelEndsAtItsFirstZeroByteAndTheReaderStaysInStep)
{
    using namespace std::string_literals;
    read(records::model(
        {{Faces,
          {records::face(3, "to\0p"s, true, -1, {}), records::face(4, "next", false, -1, {})}}}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    expectWrittenAs(records::model(
        {{Faces,
          {records::face(3, "to", true, -1, {}), records::face(4, "next", false, -1, {})}}}));
}

TEST_F(GoldenTopology, ShellIsFlagAndFaces)
{
    for (bool const flag : {true, false}) {
        currentSubPool().clear();
        Shell * const made = Shell::create(2);
        made->setShellFlag(flag);
        made->addFace(Face::create(9, nullptr));
        made->addFace(Face::create(8, nullptr));
        face(8)->setSense(true);
        face(9)->setSense(true);
        ByteString record;
        record.i32(2).u8(flag ? 1 : 0).i32(2).i32(9).i32(8);
        expectTravelsAs(records::model(
            {{Faces, {records::face(8, "", true, -1, {}), records::face(9, "", true, -1, {})}},
             {Shells, {record}}}));
        EXPECT_EQ(shell(2)->getShellFlag(), flag);
        EXPECT_EQ(idsOf(shell(2), &Shell::forEachFace), (Ids{9, 8}));
    }
}

TEST_F(GoldenTopology, BodyIsNameShellsAndStripsOfTheFirstSection)
{
    Body * const made = Body::create(1, "Nut");
    for (int const id : {3, 2})
        made->addShell(Shell::create(id));
    shell(2)->setShellFlag(true);
    shell(3)->setShellFlag(true);
    float const corners[6] = {1, 2, 3, 4, 5, 6};
    for (int const id : {6, 5, 4})
        made->addTriStrip(TriStrip::create(id, corners, nullptr, 2, nullptr, 0, nullptr, 0, false));
    ByteString record;
    record.i32(1).i32(3).u8('N').u8('u').u8('t');
    record.i32(2).i32(3).i32(2).i32(3).i32(6).i32(5).i32(4);
    EXPECT_EQ(record.bytes().size(), 16U + 3U + 4U * (2U + 3U));
    expectTravelsAs(records::model(
        {{Facets, {records::bareStrip(4), records::bareStrip(5), records::bareStrip(6)}},
         {Shells, {records::shell(2, true, {}), records::shell(3, true, {})}},
         {Bodies, {record}}}));
    EXPECT_STREQ(body(1)->getName(), "Nut");
    EXPECT_EQ(idsOf(body(1), &Body::forEachShell), (Ids{3, 2}));
    EXPECT_EQ(childrenOf(body(1), &Body::forEachTriStrip),
              (std::vector<TriStrip *>{strip(6), strip(5), strip(4)}));
}

TEST_F(GoldenTopology, ABodyWithAnEmptyNameAndNothingInItTakes16Bytes)
{
    Body::create(1, "");
    ByteString record;
    record.i32(1).i32(0).i32(0).i32(0);
    EXPECT_EQ(record.bytes().size(), 16U);
    expectTravelsAs(records::model({{Bodies, {record}}}));
    EXPECT_STREQ(body(1)->getName(), "");
}

TEST_F(GoldenTopology, ChildrenThatTheStreamDoesNotHoldAreDroppedAndTheOthersStayInOrder)
{
    auto const stream = [](Ids const & fins, Ids const & loops, Ids const & faces,
                           Ids const & shells, Ids const & strips) {
        return records::model(
            {{Facets, {records::bareStrip(1), records::bareStrip(2)}},
             {Fins, {records::fin(1, -1), records::fin(2, -1)}},
             {Loops, {records::loop(1, fins), records::loop(2, {})}},
             {Faces, {records::face(1, "", true, -1, loops), records::face(2, "", true, -1, {})}},
             {Shells, {records::shell(1, true, faces), records::shell(2, true, {})}},
             {Bodies, {records::body(1, "", shells, strips)}}});
    };
    read(stream({50, 2, -1, 1, 51}, {-1, 2, 50, 1}, {2, 50, 1}, {2, 1, 50}, {50, -1, 2, 1}));
    EXPECT_EQ(Server::exchangeFailure(), "");
    expectWrittenAs(stream({2, 1}, {2, 1}, {2, 1}, {2, 1}, {2, 1}));
}

TEST_F(GoldenTopology, NullEntriesAreCountedAndWrittenAsMinusOneAndTheReaderSkipsThem)
{
    Loop * const madeLoop = Loop::create(1);
    madeLoop->addFin(nullptr);
    madeLoop->addFin(Fin::create(1, nullptr, true));
    madeLoop->addFin(nullptr);
    Face * const madeFace = Face::create(1, nullptr);
    madeFace->setSense(true);
    madeFace->addLoop(nullptr);
    madeFace->addLoop(madeLoop);
    Shell * const madeShell = Shell::create(1);
    madeShell->setShellFlag(true);
    madeShell->addFace(madeFace);
    madeShell->addFace(nullptr);
    Body * const madeBody = Body::create(1, "");
    madeBody->addShell(nullptr);
    madeBody->addShell(madeShell);
    madeBody->addTriStrip(nullptr);
    auto const stream = [](Ids const & fins, Ids const & loops, Ids const & faces,
                           Ids const & shells, Ids const & strips) {
        return records::model({{Fins, {records::fin(1, -1)}},
                               {Loops, {records::loop(1, fins)}},
                               {Faces, {records::face(1, "", true, -1, loops)}},
                               {Shells, {records::shell(1, true, faces)}},
                               {Bodies, {records::body(1, "", shells, strips)}}});
    };
    expectArrivesAs(stream({-1, 1, -1}, {-1, 1}, {1, -1}, {-1, 1}, {-1}),
                    stream({1}, {1}, {1}, {1}, {}));
}

TEST_F(GoldenTopology, WhatWasDestroyedWhileItHadUsersIsWrittenAsMinusOne)
{
    Edge * const living =
        Edge::create(1, makeCurve(1), makeVertex(1), Vertex::create(2, 0.5), true);
    Fin::create(1, living, true);
    Fin::create(2, Edge::create(2, nullptr, nullptr, nullptr, true), true);
    Face::create(1, makeSurface(1))->setSense(true);
    Curve3D::destruct(carrierOfCurve(1));
    Vertex::destruct(vertex(1));
    Surface::destruct(carrierOfSurface(1));
    Edge::destruct(edge(2));
    expectTravelsAs(records::model({{Vertices, {records::vertex(2, 0.5)}},
                                    {Edges, {records::edge(1, -1, -1, 2)}},
                                    {Fins, {records::fin(1, 1), records::fin(2, -1)}},
                                    {Faces, {records::face(1, "", true, -1, {})}}}));
}

TEST_F(GoldenTopology, ANewCarrierUnderTheIdOfADeadOneIsNotWhatTheEdgeNames)
{
    Edge::create(1, makeCurve(1), nullptr, nullptr, true);
    Curve3D * const first = carrierOfCurve(1);
    Curve3D::destruct(first);
    // Keeps the place in memory from being used again.
    makeCurve(2);
    makeCurve(1);
    ASSERT_NE(carrierOfCurve(1), first);
    expectWrittenAs(records::model(
        {{Curves, {lineCarrier(1), lineCarrier(2)}}, {Edges, {records::edge(1, -1, -1, -1)}}}));
}

TEST_F(GoldenTopology, ABodyOfEverySectionArrivesWhole)
{
    std::map<int, std::vector<ByteString>> const sections = {
        {Facets, {records::bareStrip(4)}},
        {Curves, {lineCarrier(1)}},
        {UVCurves, {uvCarrier(1)}},
        {Surfaces, {planeCarrier(1)}},
        {Vertices, {records::vertex(1, {1, 2, 3}), records::vertex(2, 4)}},
        {Edges, {records::edge(1, 1, 1, 2)}},
        {Fins, {records::fin(1, 1, 1)}},
        {Loops, {records::loop(1, {1})}},
        {Faces, {records::face(1, "face", true, 1, {1})}},
        {Shells, {records::shell(1, false, {1})}},
        {Bodies, {records::body(1, "body", {1}, {4})}}};
    read(records::model(sections));
    EXPECT_EQ(Server::exchangeFailure(), "");
    expectWrittenAs(records::model(sections));
    // The body owns or shares in all of it.
    Body::destruct(body(1));
    expectWrittenAs(Bytes(108, 0));
}

} // namespace
} // namespace transl_tk
