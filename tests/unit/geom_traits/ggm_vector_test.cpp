#include "geom_traits/ggm_vector.h"

#include <cmath>
#include <gtest/gtest.h>
#include <limits>
#include <string>

namespace ggm {
namespace {

constexpr float Infinity = std::numeric_limits<float>::infinity();

/// What the making of a unit vector prints.
std::string printedBy(Vector<3, float> & vector)
{
    testing::internal::CaptureStdout();
    vector.unit();
    return testing::internal::GetCapturedStdout();
}

std::string criticalError(char const * line, char const * error)
{
    return std::string("VORN: critical error:\n\tfile geom_traits/ggm_vector.cpp: line ") + line +
           " (ggm::Vector<3,float>::unit - " + __DATE__ + ")\n\t" + error + "\n";
}

TEST(GgmVector, IsDividedByItsLength)
{
    Vector<3, float> vector{{2, -3, 6}};
    EXPECT_EQ(printedBy(vector), "");
    EXPECT_EQ(vector.components[0], 2.0F / 7.0F);
    EXPECT_EQ(vector.components[1], -3.0F / 7.0F);
    EXPECT_EQ(vector.components[2], 6.0F / 7.0F);
}

TEST(GgmVector, TakesItsLengthInFloats)
{
    Vector<3, float> vector{{1e20F, 0, 0}};
    EXPECT_EQ(printedBy(vector), "");
    EXPECT_EQ(vector.components[0], 0.0F); // its square is more than a float holds
}

TEST(GgmVector, ReportsADivisionByZeroAndGoesOn)
{
    Vector<3, float> vector{{0, 0, 0}};
    EXPECT_EQ(printedBy(vector), criticalError("234", "Division by zero"));
    for (float const component : vector.components)
        EXPECT_TRUE(std::isnan(component));
}

TEST(GgmVector, ReportsEachComponentThatBecomesPositiveInfinity)
{
    Vector<3, float> vector{{1e-30F, -1e-30F, 2e-30F}};
    EXPECT_EQ(printedBy(vector), criticalError("234", "Division by zero") +
                                     criticalError("237", "Division produced infinity") +
                                     criticalError("237", "Division produced infinity"));
    EXPECT_EQ(vector.components[0], Infinity);
    EXPECT_EQ(vector.components[1], -Infinity);
    EXPECT_EQ(vector.components[2], Infinity);
}

TEST(GgmVector, StaysSilentAboutNaN)
{
    Vector<3, float> vector{{std::nanf(""), 0, 0}};
    EXPECT_EQ(printedBy(vector), "");
    EXPECT_TRUE(std::isnan(vector.components[1]));
}

} // namespace
} // namespace ggm
