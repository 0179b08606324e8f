// Every kind of curve and surface, by files that the test makes: what arrives, and that the shape
// is the same one.
#include "step/kernel_reading.h"
#include "step/made_files.h"
#include "step/received_model.h"
#include "support/leftovers.h"

#include <keld-transl/geom/surface.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/face.h>
#include <keld-transl/topology/fin.h>
#include <keld-transl/topology/loop.h>
#include <keld-transl/topology/surface.h>

#include <cmath>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using tests::Measures;
using tests::ReceivedModel;

constexpr int Warning = 1;
constexpr int Error = 2;

class StepShapes : public testing::Test
{
protected:
    /// Sends `shape` through the system, and expects that nothing was lost and that it is the same
    /// shape. `check(model)` looks at what arrived.
    template <class Check> void send(TopoDS_Shape const & shape, Check && check)
    {
        std::string const path = m_Files / "shape.brep";
        tests::writeBrep(shape, path);
        ReceivedModel const received(path);
        ASSERT_EQ(8U, received.status()) << received.log();
        EXPECT_THAT(received.entries(Error), IsEmpty());
        EXPECT_THAT(received.log(), HasSubstr("Nothing was lost."));
        check(received);

        std::vector<std::string> faults;
        Measures const measures = tests::measuresOf(received.rebuilt(faults));
        EXPECT_THAT(faults, IsEmpty());
        Measures const expected = tests::measuresOf(shape);
        EXPECT_NEAR(expected.volume, measures.volume, 1e-6 * std::abs(expected.volume));
        EXPECT_NEAR(expected.area, measures.area, 1e-6 * expected.area);
        EXPECT_LE(expected.centre.Distance(measures.centre), 1e-6 * std::sqrt(expected.area));
    }

    tests::LeftoverGuard m_Guard;
    tests::TemporaryDirectory m_Files;
};

std::multiset<int> surfaceTypes(ReceivedModel const & received)
{
    std::multiset<int> types;
    received.model().m_Surfaces.m_Entities.forEach([&](int, transl_tk::Base * entity) {
        types.insert(static_cast<transl_tk::Surface *>(entity)->getSurface()->getType());
    });
    return types;
}

std::multiset<int> curveTypes(ReceivedModel const & received)
{
    std::multiset<int> types;
    received.model().m_Curves3D.m_Entities.forEach([&](int, transl_tk::Base * entity) {
        types.insert(static_cast<transl_tk::Curve3D *>(entity)->getCurve()->getType());
    });
    return types;
}

/// How many edges have no curve in space.
int edgesWithoutCurve(ReceivedModel const & received)
{
    int count = 0;
    received.model().m_Edges.m_Entities.forEach([&](int, transl_tk::Base * entity) {
        count += static_cast<transl_tk::Edge *>(entity)->getCurve() == nullptr ? 1 : 0;
    });
    return count;
}

TEST_F(StepShapes, ASeamIsOneEdgeOfTwoFinsOfOneFace)
{
    send(tests::seamedCylinder(), [](ReceivedModel const & received) {
        EXPECT_EQ((tests::Counts{1, 3, 3, 2}), received.counts());
        EXPECT_EQ(6U, received.model().m_Fins.m_Entities.size());
        EXPECT_EQ(6U, received.model().m_UVCurves.m_Entities.size());
        EXPECT_THAT(
            surfaceTypes(received),
            ElementsAre(geom::Surface::Cylinder, geom::Surface::Plane, geom::Surface::Plane));
        EXPECT_THAT(curveTypes(received),
                    ElementsAre(geom::Curve::Circle, geom::Curve::Circle, geom::Curve::Line));
    });
}

TEST_F(StepShapes, PolesAreEdgesWithoutACurve)
{
    send(tests::sphere(), [](ReceivedModel const & received) {
        EXPECT_THAT(surfaceTypes(received), ElementsAre(geom::Surface::Sphere));
        EXPECT_EQ(3U, received.counts().edges);
        EXPECT_EQ(2, edgesWithoutCurve(received));
        EXPECT_EQ(4U, received.model().m_UVCurves.m_Entities.size());
    });
}

TEST_F(StepShapes, TorusIsExact)
{
    send(tests::torus(), [](ReceivedModel const & received) {
        EXPECT_THAT(surfaceTypes(received), ElementsAre(geom::Surface::Torus));
        EXPECT_THAT(received.entries(Warning), IsEmpty());
    });
}

TEST_F(StepShapes, HyperbolaBecomesASpline)
{
    send(tests::coneWithHyperbola(), [](ReceivedModel const & received) {
        EXPECT_THAT(surfaceTypes(received), Contains(geom::Surface::Cone));
        EXPECT_THAT(received.entries(Warning),
                    Contains(HasSubstr("1 hyperbola as B-spline curve")));
    });
}

TEST_F(StepShapes, ParabolaBecomesASpline)
{
    send(tests::parabolicPrism(), [](ReceivedModel const & received) {
        EXPECT_THAT(received.entries(Warning),
                    Contains(HasSubstr("Curve: 2 parabola as B-spline curve")));
    });
}

TEST_F(StepShapes, EllipsesAreExact)
{
    send(tests::ellipticPrism(), [](ReceivedModel const & received) {
        EXPECT_THAT(curveTypes(received), Contains(geom::Curve::Ellipse).Times(2));
        EXPECT_THAT(surfaceTypes(received), Contains(geom::Surface::LinearExtrusion));
    });
}

TEST_F(StepShapes, BezierSurfaceBecomesASpline)
{
    send(tests::bezierPatch(), [](ReceivedModel const & received) {
        EXPECT_THAT(surfaceTypes(received), ElementsAre(geom::Surface::BSpline));
        EXPECT_THAT(received.entries(Warning),
                    Contains(HasSubstr("1 Bezier surface as B-spline surface")));
    });
}

TEST_F(StepShapes, OffsetSurfaceKeepsItsBaseAndDistance)
{
    send(tests::offsetPatch(), [](ReceivedModel const & received) {
        EXPECT_THAT(surfaceTypes(received), ElementsAre(geom::Surface::Offset));
    });
}

TEST_F(StepShapes, ExtrusionIsExact)
{
    send(tests::extrudedSpline(), [](ReceivedModel const & received) {
        EXPECT_THAT(surfaceTypes(received), ElementsAre(geom::Surface::LinearExtrusion));
        EXPECT_THAT(received.entries(Warning), IsEmpty());
    });
}

TEST_F(StepShapes, RevolutionIsExact)
{
    send(tests::revolvedSpline(), [](ReceivedModel const & received) {
        EXPECT_THAT(surfaceTypes(received), ElementsAre(geom::Surface::Revolution));
        EXPECT_THAT(received.entries(Warning), IsEmpty());
    });
}

TEST_F(StepShapes, LeftHandedCylinderTurnsItsSecondParameter)
{
    send(tests::mirrored(tests::seamedCylinder()), [](ReceivedModel const & received) {
        EXPECT_THAT(received.entries(Warning), Contains(HasSubstr("1 left-handed cylinder")));
    });
}

TEST_F(StepShapes, LeftHandedConeTurnsItsSecondParameter)
{
    send(tests::mirrored(tests::coneWithHyperbola()), [](ReceivedModel const & received) {
        EXPECT_THAT(received.entries(Warning), Contains(HasSubstr("1 left-handed cone")));
    });
}

TEST_F(StepShapes, LeftHandedSphereTurnsItsSecondParameter)
{
    send(tests::mirrored(tests::sphere()), [](ReceivedModel const & received) {
        EXPECT_THAT(received.entries(Warning), Contains(HasSubstr("1 left-handed sphere")));
    });
}

TEST_F(StepShapes, LeftHandedTorusTurnsItsSecondParameter)
{
    send(tests::mirrored(tests::torus()), [](ReceivedModel const & received) {
        EXPECT_THAT(received.entries(Warning), Contains(HasSubstr("1 left-handed torus")));
    });
}

TEST_F(StepShapes, EdgesAndPointsBesideFacesBelongToThePart)
{
    send(tests::edgeAndPoint(), [](ReceivedModel const & received) {
        EXPECT_EQ(1U, received.model().m_Edges.m_Entities.size());
        EXPECT_EQ(2U, received.model().m_Vertices.m_Entities.size());
        EXPECT_EQ(1U, received.model().m_Points.m_Entities.size());
        EXPECT_EQ(0U, received.model().m_Bodies.m_Entities.size());
    });
}

TEST_F(StepShapes, MirroredOffsetSurfaceStaysOnItsSide)
{
    send(tests::mirrored(tests::offsetPatch()), [](ReceivedModel const & received) {
        EXPECT_THAT(surfaceTypes(received), ElementsAre(geom::Surface::Offset));
    });
}

} // namespace
