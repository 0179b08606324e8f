#include "support/models.h"
#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/topology/cartesian_coord.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/spot_weld.h>
#include <keld-transl/topology/surface.h>
#include <keld-transl/topology/uv_curve.h>

#include <gtest/gtest.h>

namespace transl_tk {
namespace {

TEST(ClearOfCarriers, EndsSurfacesThenUVCurvesThenCurvesInOrderOfIds)
{
    tests::ScopedPool const pool;
    tests::Ends ends;
    Curve3D::create(1, new tests::ForeignCurve(ends, "curve 1"));
    UVCurve::create(2, new tests::ForeignUVCurve(ends, "uv curve 2"));
    UVCurve::create(-4, new tests::ForeignUVCurve(ends, "uv curve -4"));
    Surface::create(9, new tests::ForeignSurface(ends, "surface 9"));
    Surface::create(8, new tests::ForeignSurface(ends, "surface 8"));
    Surface::create(10, nullptr);
    Pool::getInstance()->clear();
    EXPECT_EQ(ends,
              (tests::Ends{"surface 8", "surface 9", "uv curve -4", "uv curve 2", "curve 1"}));
}

TEST(ClearOfCarriers, EmptiesEveryStore)
{
    tests::ScopedPool const pool;
    tests::Ends ends;
    SpotWeld::create(0, 1, 2, 3)->addWeldName("weld");
    CartesianCoord::create(0, tests::At, tests::AxisX, tests::AxisY, tests::Nowhere);
    Curve3D::create(0, new tests::ForeignCurve(ends, "curve"));
    UVCurve::create(0, nullptr);
    Surface::create(0, nullptr);
    Pool::getInstance()->clear();
    for (auto const store : {&SubPool::m_SpotWelds, &SubPool::m_CartesianCoords,
                             &SubPool::m_Curves3D, &SubPool::m_UVCurves, &SubPool::m_Surfaces})
        EXPECT_TRUE((tests::currentSubPool().*store).m_Entities.empty());
}

} // namespace
} // namespace transl_tk
