#include "support/shapes.h"
#include "support/slots.h"

#include <keld-transl/geom/cartesian_coord.h>

#include <gtest/gtest.h>
#include <type_traits>

namespace geom {
namespace {

struct Axes
{
    double origin[3];
    double first[3];
    double second[3];
    double third[3];
};

Axes axesOf(tests::Owned<CartesianCoord> const & coord)
{
    Axes axes{};
    coord->getAxes(axes.origin, axes.first, axes.second, axes.third);
    return axes;
}

std::vector<std::uint64_t> bitsOf(Axes const & axes)
{
    std::vector<std::uint64_t> bits;
    for (auto const & triple : {axes.origin, axes.first, axes.second, axes.third})
        for (std::uint64_t const each : tests::bitsOf(std::vector<double>(triple, triple + 3)))
            bits.push_back(each);
    return bits;
}

tests::Owned<CartesianCoord> make(Axes const & axes)
{
    return tests::owned(CartesianCoord::create(axes.origin, axes.first, axes.second, axes.third));
}

TEST(GeomCartesianCoord, KeepsTheCallersThirdAxisAndEveryBit)
{
    Axes const axes{{1, tests::NegativeZero, 3}, {4, 5, 6}, {tests::OddNan, 8, 9}, {10, 11, 12}};
    EXPECT_EQ(bitsOf(axesOf(make(axes))), bitsOf(axes));
}

TEST(GeomCartesianCoord, ScalesItsOriginAlone)
{
    auto const coord = make({{2, 3, 4}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12}});
    CartesianCoord::scale(coord.get(), 2, 1, 1, 1);
    EXPECT_EQ(bitsOf(axesOf(coord)), bitsOf({{3, 5, 7}, {4, 5, 6}, {7, 8, 9}, {10, 11, 12}}));
}

TEST(GeomCartesianCoord, ScalesInThreeRoundingSteps)
{
    using namespace tests::rounding;
    auto const coord = make({{Position, Position, Position}, {}, {}, {}});
    CartesianCoord::scale(coord.get(), Factor, Centre, Centre, Centre);
    EXPECT_EQ(std::to_array(axesOf(coord).origin), (tests::Triple{Scaled, Scaled, Scaled}));
}

TEST(GeomCartesianCoord, DestructOfNullDoesNothing)
{
    CartesianCoord::destruct(nullptr);
}

TEST(GeomCartesianCoord, TableHoldsTheAxesBeforeTheDestructor)
{
    EXPECT_EQ(tests::slotOf(&CartesianCoord::getAxes), 0U);
    EXPECT_TRUE(std::has_virtual_destructor_v<CartesianCoord>);
    EXPECT_FALSE(std::is_destructible_v<CartesianCoord>);
}

} // namespace
} // namespace geom
