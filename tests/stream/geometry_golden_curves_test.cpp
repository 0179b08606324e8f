#include "stream/geometry_stream.h"

#include <keld-transl/geom/bspline_curve.h>
#include <keld-transl/geom/circle.h>
#include <keld-transl/geom/composite_curve.h>
#include <keld-transl/geom/ellipse.h>
#include <keld-transl/geom/line.h>
#include <keld-transl/geom/line_strip.h>
#include <keld-transl/geom/trimming_points.h>

namespace transl_tk {
namespace {

using namespace tests;

class GoldenCurves : public GeometryStream
{
protected:
    /// Gives the model `curve` in the carrier 9, and expects that it travels as `record`.
    void expectCurve(geom::Curve * curve, ByteString const & record)
    {
        Curve3D::create(9, curve);
        expectTravelsAs(records::model(Curves, {records::carried(9, record)}));
    }

    static geom::Circle * makeCircle()
    {
        return geom::Circle::create(L, A, B, Nowhere, 0.5, ofCurve());
    }
    static geom::Line * makeLine() { return geom::Line::create(L, A, ofCurve()); }

    static std::vector<geom::Curve *> membersOf(geom::CompositeCurve & composite)
    {
        std::vector<geom::Curve *> members;
        composite.forEachCurve(
            [](geom::Curve * member, void * list) {
                static_cast<std::vector<geom::Curve *> *>(list)->push_back(member);
                return true;
            },
            &members);
        return members;
    }

    template <class Spline> static void expectSpline(Spline & spline, bool flagA, bool flagB)
    {
        int degree = 0;
        bool flags[2] = {};
        spline.getSplineForm(degree, flags[0], flags[1]);
        EXPECT_EQ(degree, 2);
        EXPECT_EQ(flags[0], flagA);
        EXPECT_EQ(flags[1], flagB);
        EXPECT_EQ(spline.getNumControlPoints(), 2);
        std::array<double, 2> knots{};
        std::array<int, 2> multiplicities{};
        ASSERT_EQ(spline.getNumKnots(), 2);
        spline.getKnots(knots.data(), multiplicities.data());
        EXPECT_EQ(knots, std::to_array(Knots));
        EXPECT_EQ(multiplicities, std::to_array(Multiplicities));
    }

    template <class Spline> static void expectWeights(Spline & spline)
    {
        std::array<double, 2> weights{};
        spline.getWeights(weights.data());
        EXPECT_TRUE(spline.isRational());
        EXPECT_EQ(weights, std::to_array(SevenAndEight));
    }
};

TEST_F(GoldenCurves, CircleIsRadiusThenPlacementRowByRow)
{
    expectCurve(makeCircle(), records::circle());
    expectValuesOfCurve(curve<geom::Circle>());
    EXPECT_EQ(curve<geom::Circle>().getRadius(), 0.5);
    EXPECT_EQ(placementOf(curve<geom::Circle>()), Placed);
}

TEST_F(GoldenCurves, CircleWithEmptyParameterizationIs116BytesWithItsTag)
{
    ByteString record;
    record.i32(1).i32(0).i32(0).f64({0.5}).raw(records::placement());
    EXPECT_EQ(record.bytes().size(), 116U);
    expectCurve(geom::Circle::create(L, A, B, Nowhere, 0.5, geom::Parameterization()), record);
    EXPECT_TRUE(curve<geom::Circle>().getParameterization().m_Values.empty());
}

TEST_F(GoldenCurves, TheThirdAxisOfACircleInTheStreamIsNotTaken)
{
    ByteString record;
    record.i32(1).raw(records::ofCurve()).f64({0.5});
    record.f64({1, 4, 7, 90, 2, 5, 8, 91, 3, 6, 9, 92});
    read(records::model(Curves, {records::carried(9, record)}));
    EXPECT_EQ(placementOf(curve<geom::Circle>()), Placed);
}

TEST_F(GoldenCurves, SplineCurveThatIsNotRationalHasNoWeights)
{
    expectCurve(geom::BSplineCurve::create(2, true, false, 2, Multiplicities, Knots, 2, OneToSix,
                                           nullptr, ofCurve()),
                records::splineCurve());
    auto & spline = curve<geom::BSplineCurve>();
    expectValuesOfCurve(spline);
    expectSpline(spline, true, false);
    std::array<double, 6> points{};
    spline.getControlPoints(points.data());
    EXPECT_EQ(points, std::to_array(OneToSix));
    EXPECT_FALSE(spline.isRational());
}

TEST_F(GoldenCurves, RationalSplineCurveHasItsWeightsBehindThePoints)
{
    expectCurve(geom::BSplineCurve::create(2, false, true, 2, Multiplicities, Knots, 2, OneToSix,
                                           SevenAndEight, ofCurve()),
                records::rationalSplineCurve());
    expectSpline(curve<geom::BSplineCurve>(), false, true);
    expectWeights(curve<geom::BSplineCurve>());
}

TEST_F(GoldenCurves, EllipseIsTwoRadiiThenPlacement)
{
    expectCurve(geom::Ellipse::create(L, A, B, Nowhere, 0.5, 0.25, ofCurve()), records::ellipse());
    expectValuesOfCurve(curve<geom::Ellipse>());
    EXPECT_EQ(curve<geom::Ellipse>().getFirstRadius(), 0.5);
    EXPECT_EQ(curve<geom::Ellipse>().getSecondRadius(), 0.25);
    EXPECT_EQ(placementOf(curve<geom::Ellipse>()), Placed);
}

TEST_F(GoldenCurves, LineIsPointAndDirectionByTurns)
{
    expectCurve(makeLine(), records::line());
    expectValuesOfCurve(curve<geom::Line>());
    double values[3];
    curve<geom::Line>().getPoint(values);
    EXPECT_EQ(std::to_array(values), Triple123);
    curve<geom::Line>().getDirection(values);
    EXPECT_EQ(std::to_array(values), Triple456);
}

TEST_F(GoldenCurves, LineStripIsItsPoints)
{
    auto * const strip = geom::LineStrip::create(ofCurve());
    strip->addPoint(1, 2, 3);
    strip->addPoint(4, 5, 6);
    expectCurve(strip, records::lineStrip());
    expectValuesOfCurve(curve<geom::LineStrip>());
    ASSERT_EQ(curve<geom::LineStrip>().getNumPoints(), 2);
    std::array<double, 6> points{};
    curve<geom::LineStrip>().getPoints(points.data());
    EXPECT_EQ(points, std::to_array(OneToSix));
}

TEST_F(GoldenCurves, LineStripWithoutPointsIsACountOfZero)
{
    expectCurve(geom::LineStrip::create(ofCurve()),
                ByteString().i32(6).raw(records::ofCurve()).i32(0));
    EXPECT_EQ(curve<geom::LineStrip>().getNumPoints(), 0);
}

TEST_F(GoldenCurves, CompositeIsItsMembersNullAmongThem)
{
    auto const line = owned<geom::Curve>(makeLine());
    auto const circle = owned<geom::Curve>(makeCircle());
    geom::Curve * members[3] = {line.get(), nullptr, circle.get()};
    expectCurve(geom::CompositeCurve::create(members, 3, ofCurve()), records::composite());
    expectValuesOfCurve(curve<geom::CompositeCurve>());
    std::vector<geom::Curve *> const read = membersOf(curve<geom::CompositeCurve>());
    ASSERT_EQ(read.size(), 3U);
    EXPECT_EQ(read[0]->getType(), geom::Curve::Line);
    EXPECT_EQ(read[1], nullptr);
    EXPECT_EQ(dynamic_cast<geom::Circle &>(*read[2]).getRadius(), 0.5);
}

TEST_F(GoldenCurves, CompositeInsideACompositeIsItsTagAlone)
{
    auto const line = owned<geom::Curve>(makeLine());
    geom::Curve * one[1] = {line.get()};
    auto const inner = owned<geom::Curve>(geom::CompositeCurve::create(one, 1, ofCurve()));
    geom::Curve * members[2] = {inner.get(), line.get()};
    Curve3D::create(9, geom::CompositeCurve::create(members, 2, ofCurve()));
    ByteString record;
    record.i32(7).raw(records::ofCurve()).i32(2).i32(7).raw(records::line());
    expectWrittenAs(records::model(Curves, {records::carried(9, record)}));
}

TEST_F(GoldenCurves, AFullCompositeInsideACompositeIsReadAsOne)
{
    ByteString record;
    record.i32(7).raw(records::ofCurve()).i32(1).raw(records::composite());
    read(records::model(Curves, {records::carried(9, record)}));
    std::vector<geom::Curve *> const outer = membersOf(curve<geom::CompositeCurve>());
    ASSERT_EQ(outer.size(), 1U);
    EXPECT_EQ(membersOf(dynamic_cast<geom::CompositeCurve &>(*outer[0])).size(), 3U);
}

TEST_F(GoldenCurves, TrimmingPointsDoNotTravel)
{
    auto * const line = makeLine();
    line->setTrimPoints(new geom::trimmingPoints(false));
    expectCurve(line, records::line());
    EXPECT_EQ(curve<geom::Line>().getTrimPoints(), nullptr);
}

TEST_F(GoldenCurves, CarriersStandInAscendingOrderOfIds)
{
    Curve3D::create(5, makeLine());
    Curve3D::create(-1, makeCircle());
    expectTravelsAs(records::model(
        Curves, {records::carried(-1, records::circle()), records::carried(5, records::line())}));
}

TEST_F(GoldenCurves, UVCurveIsItsKindAndASplineWithoutParameterization)
{
    UVCurve::create(
        8, geom::UVCurve::create(2, true, false, 2, Multiplicities, Knots, 2, OneToSix, nullptr));
    UVCurve::create(9, geom::UVCurve::create(2, false, true, 2, Multiplicities, Knots, 2, OneToSix,
                                             SevenAndEight));
    expectTravelsAs(
        records::model(UVCurves, {ByteString().i32(8).i32(3).raw(records::uvCurve()),
                                  ByteString().i32(9).i32(3).raw(records::rationalUVCurve())}));
    geom::UVCurve & plain = *entity<UVCurve>(&SubPool::m_UVCurves, 8)->getCurve();
    expectSpline(plain, true, false);
    EXPECT_FALSE(plain.isRational());
    std::array<double, 4> points{};
    plain.getControlPoints(points.data());
    EXPECT_EQ(points, (std::array<double, 4>{1, 2, 3, 4}));
    geom::UVCurve & rational = *entity<UVCurve>(&SubPool::m_UVCurves, 9)->getCurve();
    expectSpline(rational, false, true);
    expectWeights(rational);
}

TEST_F(GoldenCurves, TrimmingPointsOfAUVCurveDoNotTravel)
{
    auto * const made =
        geom::UVCurve::create(2, true, false, 2, Multiplicities, Knots, 2, OneToSix, nullptr);
    made->setTrimPoints(new geom::trimmingPoints(false));
    UVCurve::create(8, made);
    expectTravelsAs(records::model(UVCurves, {ByteString().i32(8).i32(3).raw(records::uvCurve())}));
    EXPECT_EQ(entity<UVCurve>(&SubPool::m_UVCurves, 8)->getCurve()->getTrimPoints(), nullptr);
}

TEST_F(GoldenCurves, UVCurveWithoutACurveIsTheKindZeroAndNoneIsMadeOfIt)
{
    UVCurve::create(8, nullptr);
    Bytes const bytes = records::model(UVCurves, {ByteString().i32(8).i32(0)});
    expectWrittenAs(bytes);
    currentSubPool().clear();
    read(bytes);
    EXPECT_EQ(Server::exchangeFailure(), "");
    EXPECT_EQ(countOf(&SubPool::m_UVCurves), 0U);
}

TEST_F(GoldenCurves, SpotWeldIsItsPositionAndItsNames)
{
    SpotWeld * const weld = SpotWeld::create(4, 1, 2, 3);
    weld->addWeldName("ab");
    weld->addWeldName("");
    SpotWeld::create(6, 4, 5, 6);
    expectTravelsAs(
        records::model(SpotWelds, {ByteString().i32(4).f64({1, 2, 3}).i32(2).text("ab").text(""),
                                   ByteString().i32(6).f64({4, 5, 6}).i32(0)}));
    double position[3];
    SpotWeld & read = *entity<SpotWeld>(&SubPool::m_SpotWelds, 4);
    read.getCoordinates(position[0], position[1], position[2]);
    EXPECT_EQ(std::to_array(position), Triple123);
    std::vector<std::string> names;
    read.forEachWeldName(
        [](char const * name, void * list) {
            static_cast<std::vector<std::string> *>(list)->emplace_back(name);
            return true;
        },
        &names);
    EXPECT_EQ(names, (std::vector<std::string>{"ab", ""}));
}

TEST_F(GoldenCurves, CoordinateSystemKeepsTheThirdAxisItWasGiven)
{
    double const third[3] = {10, 11, 12};
    CartesianCoord::create(4, L, A, B, third);
    expectTravelsAs(records::model(
        CoordinateSystems, {ByteString().i32(4).f64({1, 4, 7, 10, 2, 5, 8, 11, 3, 6, 9, 12})}));
    double rows[4][3];
    entity<CartesianCoord>(&SubPool::m_CartesianCoords, 4)
        ->getAxes(rows[0], rows[1], rows[2], rows[3]);
    EXPECT_EQ(std::to_array(rows[0]), Triple123);
    EXPECT_EQ(std::to_array(rows[1]), Triple456);
    EXPECT_EQ(std::to_array(rows[2]), (Triple{7, 8, 9}));
    EXPECT_EQ(std::to_array(rows[3]), (Triple{10, 11, 12}));
}

} // namespace
} // namespace transl_tk
