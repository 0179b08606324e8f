#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/geom/offset_surface.h>
#include <keld-transl/geom/plane.h>
#include <keld-transl/geom/surface.h>

#include <gtest/gtest.h>

namespace geom {
namespace {

using tests::Ends;
using tests::ForeignSurface;

TEST(Surface, KindsHaveTheirNumbers)
{
    EXPECT_EQ(Surface::Type::BSpline, 2);
    EXPECT_EQ(Surface::Type::Cone, 3);
    EXPECT_EQ(Surface::Type::Cylinder, 4);
    EXPECT_EQ(Surface::Type::Offset, 5);
    EXPECT_EQ(Surface::Type::Revolution, 7);
    EXPECT_EQ(Surface::Type::Ruled, 8);
    EXPECT_EQ(Surface::Type::LinearExtrusion, 9);
    EXPECT_EQ(Surface::Type::Torus, 10);
    EXPECT_EQ(Surface::Type::Sphere, 11);
    EXPECT_EQ(Surface::Type::Plane, 12);
    EXPECT_TRUE((std::is_same_v<std::underlying_type_t<Surface::Type>, int>));
}

TEST(Surface, TableBeginsWithTheDestructor)
{
    EXPECT_EQ(tests::slotOf(&Surface::getType), 2U);
    EXPECT_EQ(tests::slotOf(&Surface::getParameterizationU), 3U);
    EXPECT_EQ(tests::slotOf(&Surface::getParameterizationV), 4U);
}

TEST(Surface, IsAbstractAndFreedByDestructAlone)
{
    EXPECT_TRUE(std::is_abstract_v<Surface>);
    EXPECT_TRUE(std::has_virtual_destructor_v<Surface>);
    EXPECT_FALSE(std::is_destructible_v<Surface>);
    EXPECT_TRUE(std::is_copy_assignable_v<Surface>);
}

TEST(Surface, DestructOfNullDoesNothing)
{
    Surface::destruct(nullptr);
}

TEST(Surface, CopiesItsTwoParameterizations)
{
    auto u = tests::parameters({1, tests::NegativeZero}, ParamForm::Angular);
    auto v = tests::parameters({tests::OddNan, 4, 5}, static_cast<ParamForm>(-9));
    auto const bitsU = tests::bitsOf(u.m_Values);
    auto const bitsV = tests::bitsOf(v.m_Values);
    auto const plane =
        tests::owned(Plane::create(tests::At, tests::AxisX, tests::AxisY, tests::Nowhere, u, v));
    u.m_Values[0] = v.m_Values[1] = 99;
    EXPECT_EQ(tests::bitsOf(plane->getParameterizationU().m_Values), bitsU);
    EXPECT_EQ(tests::bitsOf(plane->getParameterizationV().m_Values), bitsV);
    EXPECT_EQ(plane->getParameterizationU().m_Form, 2);
    EXPECT_EQ(plane->getParameterizationV().m_Form, -9);
    EXPECT_EQ(&plane->getParameterizationU(), &plane->getParameterizationU());
}

TEST(Surface, ScalingLeavesItsParameters)
{
    auto const plane =
        tests::owned(Plane::create(tests::At, tests::AxisX, tests::AxisY, tests::Nowhere,
                                   tests::parameters({1, 2}), tests::parameters({3, 4})));
    Surface::scale(plane.get(), 2, 1, 1, 1);
    EXPECT_EQ(plane->getParameterizationU().m_Values, (std::vector<double>{1, 2}));
    EXPECT_EQ(plane->getParameterizationV().m_Values, (std::vector<double>{3, 4}));
}

TEST(Surface, ScalingPassesOverKindsAndClassesThatAreNoneOfTheLibrarys)
{
    Ends ends;
    for (int type = -1; type <= 13; ++type) {
        ForeignSurface surface(ends, "surface", static_cast<Surface::Type>(type));
        Surface::scale(&surface, 2, 1, 1, 1);
        EXPECT_EQ(surface.getType(), type);
    }
}

} // namespace
} // namespace geom
