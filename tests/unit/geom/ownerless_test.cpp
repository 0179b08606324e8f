#include "geom/ownerless.h"

#include <keld-transl/geom/line_strip.h>
#include <keld-transl/geom/plane.h>

#include <gtest/gtest.h>

namespace geom {
namespace {

/// Freed shapes show under AddressSanitizer, and shapes that are left as leaks.
class Ownerless : public testing::Test
{
protected:
    static Curve * newCurve() { return LineStrip::create(Parameterization()); }
    static Surface * newSurface()
    {
        double const axis[3] = {1, 0, 0};
        return Plane::create(axis, axis, axis, axis, Parameterization(), Parameterization());
    }

    int m_Model = 0;
    int m_Other = 0;
};

TEST_F(Ownerless, ShapesGoWithTheirModel)
{
    rememberOwnerless(&m_Model, newCurve());
    rememberOwnerless(&m_Model, newSurface());
    freeOwnerless(&m_Model);
    freeOwnerless(&m_Model);
}

TEST_F(Ownerless, AShapeThatSomebodyDestroyedIsForgotten)
{
    Curve * const curve = newCurve();
    Surface * const surface = newSurface();
    rememberOwnerless(&m_Model, curve);
    rememberOwnerless(&m_Model, surface);
    rememberOwnerless(&m_Model, newCurve());
    Curve::destruct(curve);
    Surface::destruct(surface);
    freeOwnerless(&m_Model);
}

TEST_F(Ownerless, ShapesOfAnotherModelStay)
{
    Curve * const kept = newCurve();
    rememberOwnerless(&m_Model, newCurve());
    rememberOwnerless(&m_Other, kept);
    freeOwnerless(&m_Model);
    EXPECT_EQ(kept->getType(), Curve::Type::LineStrip);
    freeOwnerless(&m_Other);
}

TEST_F(Ownerless, ShapesThatNobodyRemembersAreNotTouched)
{
    Curve * const curve = newCurve();
    freeOwnerless(&m_Model);
    forgetOwnerless(curve);
    EXPECT_EQ(curve->getType(), Curve::Type::LineStrip);
    Curve::destruct(curve);
}

} // namespace
} // namespace geom
