#include "stream/geometry_stream.h"

#include <keld-transl/geom/bspline_surface.h>
#include <keld-transl/geom/circle.h>
#include <keld-transl/geom/cone.h>
#include <keld-transl/geom/cylinder.h>
#include <keld-transl/geom/line.h>
#include <keld-transl/geom/offset_surface.h>
#include <keld-transl/geom/plane.h>
#include <keld-transl/geom/ruled_surface.h>
#include <keld-transl/geom/sphere.h>
#include <keld-transl/geom/surface_of_linear_extrusion.h>
#include <keld-transl/geom/surface_of_revolution.h>
#include <keld-transl/geom/torus.h>

namespace transl_tk {
namespace {

using namespace tests;

class GoldenSurfaces : public GeometryStream
{
protected:
    /// Gives the model `surface` in the carrier 9, and expects that it travels as `record`.
    void expectSurface(geom::Surface * made, ByteString const & record)
    {
        Surface::create(9, made);
        expectTravelsAs(records::model(Surfaces, {records::carried(9, record)}));
        if (made != nullptr)
            expectValuesOfSurface(surface<geom::Surface>());
    }

    static geom::Circle * makeCircle()
    {
        return geom::Circle::create(L, A, B, Nowhere, 0.5, ofCurve());
    }
    static geom::Line * makeLine() { return geom::Line::create(L, A, ofCurve()); }
    static geom::Plane * makePlane() { return geom::Plane::create(L, A, B, Nowhere, ofU(), ofV()); }

    static geom::BSplineSurface * makeSpline(double const * weights, geom::Surface::Type form)
    {
        double const knots[1] = {5};
        int const multiplicities[1] = {4};
        return geom::BSplineSurface::create(2, true, false, 3, false, true, 2, Multiplicities,
                                            Knots, 1, multiplicities, knots, 1, 2, OneToSix,
                                            weights, ofU(), ofV(), form);
    }

    static void expectSpline(geom::BSplineSurface & spline)
    {
        int degree = 0;
        bool flags[2] = {};
        spline.getSplineFormU(degree, flags[0], flags[1]);
        EXPECT_TRUE(degree == 2 && flags[0] && !flags[1]);
        spline.getSplineFormV(degree, flags[0], flags[1]);
        EXPECT_TRUE(degree == 3 && !flags[0] && flags[1]);
        EXPECT_EQ(spline.getNumControlPointsU(), 1);
        EXPECT_EQ(spline.getNumControlPointsV(), 2);
        std::array<double, 6> points{};
        spline.getControlPoints(points.data());
        EXPECT_EQ(points, std::to_array(OneToSix));
        std::array<double, 2> knots{};
        std::array<int, 2> multiplicities{};
        ASSERT_EQ(spline.getNumKnotsU(), 2);
        spline.getKnotsU(knots.data(), multiplicities.data());
        EXPECT_EQ(knots, std::to_array(Knots));
        EXPECT_EQ(multiplicities, std::to_array(Multiplicities));
        ASSERT_EQ(spline.getNumKnotsV(), 1);
        spline.getKnotsV(knots.data(), multiplicities.data());
        EXPECT_EQ(knots[0], 5);
        EXPECT_EQ(multiplicities[0], 4);
    }
};

TEST_F(GoldenSurfaces, SplineSurfaceOfTheUsualFormHasNoFormField)
{
    expectSurface(makeSpline(nullptr, geom::Surface::BSpline), records::splineSurface());
    expectSpline(surface<geom::BSplineSurface>());
    EXPECT_FALSE(surface<geom::BSplineSurface>().isRational());
    EXPECT_EQ(surface<geom::BSplineSurface>().getSurfaceForm(), geom::Surface::BSpline);
}

TEST_F(GoldenSurfaces, SplineSurfaceOfAnotherFormHasAFormField)
{
    expectSurface(makeSpline(SevenAndEight, geom::Surface::Cylinder),
                  records::rationalSplineSurface());
    auto & spline = surface<geom::BSplineSurface>();
    expectSpline(spline);
    EXPECT_EQ(spline.getSurfaceForm(), geom::Surface::Cylinder);
    EXPECT_TRUE(spline.isRational());
    std::array<double, 2> weights{};
    spline.getWeights(weights.data());
    EXPECT_EQ(weights, std::to_array(SevenAndEight));
}

TEST_F(GoldenSurfaces, ConeIsRadiusAngleAndPlacement)
{
    expectSurface(geom::Cone::create(L, A, B, Nowhere, 0.5, 0.25, ofU(), ofV()), records::cone());
    EXPECT_EQ(surface<geom::Cone>().getRadius(), 0.5);
    EXPECT_EQ(surface<geom::Cone>().getAngle(), 0.25);
    EXPECT_EQ(placementOf(surface<geom::Cone>()), Placed);
}

TEST_F(GoldenSurfaces, CylinderIsRadiusAndPlacement)
{
    expectSurface(geom::Cylinder::create(L, A, B, Nowhere, 0.5, ofU(), ofV()), records::cylinder());
    EXPECT_EQ(surface<geom::Cylinder>().getRadius(), 0.5);
    EXPECT_EQ(placementOf(surface<geom::Cylinder>()), Placed);
}

TEST_F(GoldenSurfaces, TorusIsTwoRadiiAndPlacement)
{
    expectSurface(geom::Torus::create(L, A, B, Nowhere, 0.5, 0.25, ofU(), ofV()), records::torus());
    EXPECT_EQ(surface<geom::Torus>().getFirstRadius(), 0.5);
    EXPECT_EQ(surface<geom::Torus>().getSecondRadius(), 0.25);
    EXPECT_EQ(placementOf(surface<geom::Torus>()), Placed);
}

TEST_F(GoldenSurfaces, SphereIsRadiusAndPlacement)
{
    expectSurface(geom::Sphere::create(L, A, B, Nowhere, 0.5, ofU(), ofV()), records::sphere());
    EXPECT_EQ(surface<geom::Sphere>().getRadius(), 0.5);
    EXPECT_EQ(placementOf(surface<geom::Sphere>()), Placed);
}

TEST_F(GoldenSurfaces, PlaneIsItsPlacement)
{
    expectSurface(makePlane(), records::plane());
    EXPECT_EQ(placementOf(surface<geom::Plane>()), Placed);
}

TEST_F(GoldenSurfaces, TheThirdAxisOfAPlaneInTheStreamIsNotTaken)
{
    ByteString record;
    record.i32(12).raw(records::ofSurface()).f64({1, 4, 7, 90, 2, 5, 8, 91, 3, 6, 9, 92});
    read(records::model(Surfaces, {records::carried(9, record)}));
    EXPECT_EQ(placementOf(surface<geom::Plane>()), Placed);
}

TEST_F(GoldenSurfaces, OffsetOfAnOffsetHoldsBothAndTheirDistancesFollowTheirBases)
{
    auto const base = owned<geom::Surface>(makePlane());
    auto const inner =
        owned<geom::Surface>(geom::OffsetSurface::create(base.get(), 2, ofU(), ofV()));
    expectSurface(geom::OffsetSurface::create(inner.get(), 3, ofU(), ofV()),
                  records::offset(records::offset(records::plane(), 2), 3));
    auto & outer = surface<geom::OffsetSurface>();
    EXPECT_EQ(outer.getDistance(), 3);
    auto & read = dynamic_cast<geom::OffsetSurface &>(*outer.getBaseSurface());
    expectValuesOfSurface(read);
    EXPECT_EQ(read.getDistance(), 2);
    EXPECT_EQ(placementOf(dynamic_cast<geom::Plane &>(*read.getBaseSurface())), Placed);
}

TEST_F(GoldenSurfaces, RevolutionIsItsMeridianThenAxisPointAndDirectionByTurns)
{
    expectSurface(geom::SurfaceOfRevolution::create(L, A, makeCircle(), ofU(), ofV()),
                  records::revolution(records::circle()));
    auto & read = surface<geom::SurfaceOfRevolution>();
    EXPECT_EQ(dynamic_cast<geom::Circle &>(*read.getCurve()).getRadius(), 0.5);
    double values[3];
    read.getAxisPoint(values);
    EXPECT_EQ(std::to_array(values), Triple123);
    read.getAxisDirection(values);
    EXPECT_EQ(std::to_array(values), Triple456);
}

TEST_F(GoldenSurfaces, RuledSurfaceIsItsFirstCurveThenItsSecond)
{
    expectSurface(geom::RuledSurface::create(makeLine(), makeCircle(), ofU(), ofV()),
                  records::ruled(records::line(), records::circle()));
    EXPECT_EQ(surface<geom::RuledSurface>().getFirstCurve()->getType(), geom::Curve::Line);
    EXPECT_EQ(surface<geom::RuledSurface>().getSecondCurve()->getType(), geom::Curve::Circle);
}

TEST_F(GoldenSurfaces, OneCurveGivenTwiceComesBackAsTwo)
{
    auto const line = owned<geom::Curve>(makeLine());
    // Never destroyed, since that would free the curve twice: an offset owns no base.
    static geom::Surface * const twice =
        geom::RuledSurface::create(line.get(), line.get(), ofU(), ofV());
    ByteString const ruled = records::ruled(records::line(), records::line());
    expectSurface(geom::OffsetSurface::create(twice, 3, ofU(), ofV()), records::offset(ruled, 3));
    auto & read =
        dynamic_cast<geom::RuledSurface &>(*surface<geom::OffsetSurface>().getBaseSurface());
    EXPECT_NE(read.getFirstCurve(), read.getSecondCurve());
}

TEST_F(GoldenSurfaces, ExtrusionIsItsProfileThenTheDirection)
{
    expectSurface(geom::SurfaceOfLinearExtrusion::create(makeLine(), L, ofU(), ofV()),
                  records::extrusion(records::line()));
    auto & read = surface<geom::SurfaceOfLinearExtrusion>();
    EXPECT_EQ(read.getCurve()->getType(), geom::Curve::Line);
    double direction[3];
    read.getDirection(direction);
    EXPECT_EQ(std::to_array(direction), Triple123);
}

TEST_F(GoldenSurfaces, ShapesThatAreNotThereAreTheTagZeroAlone)
{
    using namespace geom;
    transl_tk::Surface::create(1, nullptr);
    transl_tk::Surface::create(2, OffsetSurface::create(nullptr, 3, ofU(), ofV()));
    transl_tk::Surface::create(3, SurfaceOfRevolution::create(L, A, nullptr, ofU(), ofV()));
    transl_tk::Surface::create(4, RuledSurface::create(nullptr, nullptr, ofU(), ofV()));
    transl_tk::Surface::create(5, SurfaceOfLinearExtrusion::create(nullptr, L, ofU(), ofV()));
    ByteString const none = records::tag(0);
    expectTravelsAs(records::model(Surfaces, {records::carried(1, none),
                                              records::carried(2, records::offset(none, 3)),
                                              records::carried(3, records::revolution(none)),
                                              records::carried(4, records::ruled(none, none)),
                                              records::carried(5, records::extrusion(none))}));
    EXPECT_EQ(entity<transl_tk::Surface>(&SubPool::m_Surfaces, 1)->getSurface(), nullptr);
}

} // namespace
} // namespace transl_tk
