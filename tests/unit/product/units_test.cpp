#include "support/slots.h"

#include <keld-transl/product/units.h>

#include <gtest/gtest.h>
#include <memory>

namespace transl_tk {
namespace {

struct DestructUnits
{
    void operator()(Units * units) const { Units::destruct(units); }
};
using OwnedUnits = std::unique_ptr<Units, DestructUnits>;

OwnedUnits units(int lengthType, double lengthScale = 1.0)
{
    return OwnedUnits(Units::create(static_cast<Units::LengthType>(lengthType),
                                    Units::AngularType{2}, lengthScale, 1.0));
}

TEST(Units, KeepWhatTheyAreMadeOf)
{
    OwnedUnits const made(Units::create(Units::Inch, Units::AngularType{-7}, 2.5, -0.25));
    EXPECT_EQ(made->getLengthType(), Units::Inch);
    EXPECT_EQ(made->getAngularType(), -7);
    EXPECT_EQ(made->getLengthScale(), 2.5);
    EXPECT_EQ(made->getAngularScale(), -0.25);
}

TEST(Units, KeepNumbersThatAreNoTypes)
{
    EXPECT_EQ(units(-3)->getLengthType(), -3);
    EXPECT_EQ(units(99)->getLengthType(), 99);
}

TEST(Units, HaveAFactorForEveryLengthType)
{
    struct Row
    {
        Units::LengthType type;
        int number;
        double factor;
    };
    Row const rows[] = {
        {Units::Millimetre, 1, 1000.0},       {Units::Metre, 2, 1.0},
        {Units::Inch, 3, 39.3700787},         {Units::Foot, 4, 3.2808399},
        {Units::Mile, 5, 0.000621371192},     {Units::Kilometre, 6, 0.001},
        {Units::Micrometre, 8, 1000000.0},    {Units::Centimetre, 9, 100.0},
        {Units::Micron, 11, 1000000.0},       {Units::Decimetre, 12, 10.0},
        {Units::Yard, 13, 1.0936133},         {Units::Angstrom, 14, 10000000000.0},
        {Units::Nanometre, 15, 1000000000.0},
    };
    for (Row const & row : rows) {
        EXPECT_EQ(row.type, row.number);
        EXPECT_EQ(units(row.number)->getUnitsPerMetre(), row.factor) << row.number;
    }
}

TEST(Units, UnitFactors7And10StandAsTheyAreThoughTheyFitNoUnit)
{
    EXPECT_EQ(Units::LengthSeven, 7);
    EXPECT_EQ(units(7)->getUnitsPerMetre(), 0.001609433);
    EXPECT_EQ(Units::LengthTen, 10);
    EXPECT_EQ(units(10)->getUnitsPerMetre(), 3.93700787e-08);
}

TEST(Units, ScaleTheirFactor)
{
    EXPECT_EQ(units(3, 2.0)->getUnitsPerMetre(), 78.7401574);
    EXPECT_EQ(units(1, -0.5)->getUnitsPerMetre(), -500.0);
}

TEST(Units, OfAnUnknownLengthTypeHaveNoneInAMetre)
{
    for (int const type : {0, 16, -1, 2147483647, -2147483647 - 1})
        EXPECT_EQ(units(type, 2.0)->getUnitsPerMetre(), 0.0) << type;
}

TEST(Units, DestructionOfNullIsNoFault)
{
    Units::destruct(nullptr);
}

TEST(Units, TableHoldsLengthThenAngleThenFactor)
{
    EXPECT_EQ(tests::slotOf(&Units::getLengthType), 2U);
    EXPECT_EQ(tests::slotOf(&Units::getLengthScale), 3U);
    EXPECT_EQ(tests::slotOf(&Units::getAngularType), 4U);
    EXPECT_EQ(tests::slotOf(&Units::getAngularScale), 5U);
    EXPECT_EQ(tests::slotOf(&Units::getUnitsPerMetre), 6U);
}

} // namespace
} // namespace transl_tk
