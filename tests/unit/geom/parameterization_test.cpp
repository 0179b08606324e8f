#include "support/shapes.h"

#include <keld-transl/geom/parameterization.h>

#include <gtest/gtest.h>
#include <type_traits>
#include <utility>

namespace geom {
namespace {

using Values = std::vector<double>;

ParamForm form(int number)
{
    return static_cast<ParamForm>(number);
}

TEST(Parameterization, FormsHaveTheirNumbersInSignedThirtyTwoBits)
{
    EXPECT_EQ(ParamForm::SteppedA, 0);
    EXPECT_EQ(ParamForm::SteppedB, 1);
    EXPECT_EQ(ParamForm::Angular, 2);
    EXPECT_TRUE((std::is_same_v<std::underlying_type_t<ParamForm>, int>));
}

TEST(Parameterization, IsEmptyAndOfFormZeroAtFirst)
{
    Parameterization const fresh;
    EXPECT_TRUE(fresh.m_Values.empty());
    EXPECT_EQ(fresh.m_Form, 0);
}

TEST(Parameterization, SteppedListEndsWithTheEndWhateverTheStepsGive)
{
    Parameterization const list(ParamForm::SteppedA, 1, 5, 3, 1);
    EXPECT_EQ(list.m_Values, (Values{1, 2, 5}));
    EXPECT_EQ(list.m_Form, 0);
}

TEST(Parameterization, TheTwoSteppedFormsDifferInTheirNumberAlone)
{
    Parameterization const list(ParamForm::SteppedB, 1, 5, 3, 1);
    EXPECT_EQ(list.m_Values, (Values{1, 2, 5}));
    EXPECT_EQ(list.m_Form, 1);
}

TEST(Parameterization, EveryStepAddsToTheValueBefore)
{
    Parameterization const list(ParamForm::SteppedA, 0, 9, 5, 0.1);
    EXPECT_EQ(list.m_Values, (Values{0, 0.1, 0.1 + 0.1, 0.1 + 0.1 + 0.1, 9}));
}

TEST(Parameterization, TheEndMayLieBelowTheValueBeforeIt)
{
    EXPECT_EQ(Parameterization(ParamForm::SteppedA, 1, -5, 4, 2).m_Values, (Values{1, 3, 5, -5}));
}

TEST(Parameterization, TwoValuesAreStartAndEnd)
{
    EXPECT_EQ(Parameterization(ParamForm::SteppedA, 3, 4, 2, 100).m_Values, (Values{3, 4}));
}

TEST(Parameterization, TheOnlyValueIsTheEnd)
{
    EXPECT_EQ(Parameterization(ParamForm::SteppedA, 3, 4, 1, 100).m_Values, (Values{4}));
}

TEST(Parameterization, SteppedListOfNoValuesIsEmptyAndKeepsItsForm)
{
    Parameterization const list(ParamForm::SteppedB, 3, 4, 0, 1);
    EXPECT_TRUE(list.m_Values.empty());
    EXPECT_EQ(list.m_Form, 1);
}

TEST(Parameterization, AngularListIsTheNineMultiplesOfAQuarterOfPi)
{
    Parameterization const list(ParamForm::Angular, 7, 8, 100, 9);
    EXPECT_EQ(tests::bitsOf(list.m_Values),
              (std::vector<std::uint64_t>{
                  0, 0x3FE921FB54442D18, 0x3FF921FB54442D18, 0x4002D97C7F3321D2, 0x400921FB54442D18,
                  0x400F6A7A2955385E, 0x4012D97C7F3321D2, 0x4015FDBBE9BBA775, 0x401921FB54442D18}));
    EXPECT_EQ(list.m_Form, 2);
}

TEST(Parameterization, UnknownFormsAreEmptyAndNotStored)
{
    for (int const number : {-1, 3, -2147483647 - 1, 2147483647}) {
        Parameterization const list(form(number), 1, 5, 3, 1);
        EXPECT_TRUE(list.m_Values.empty()) << number;
        EXPECT_EQ(list.m_Form, 0) << number;
    }
}

TEST(Parameterization, CopyHasValuesOfItsOwn)
{
    Parameterization original = tests::parameters({1, 2}, form(77));
    Parameterization const copy(original);
    Parameterization assigned;
    assigned = original;
    original.m_Values[0] = 9;
    EXPECT_EQ(copy.m_Values, (Values{1, 2}));
    EXPECT_EQ(copy.m_Form, 77);
    EXPECT_EQ(assigned.m_Values, (Values{1, 2}));
    EXPECT_EQ(assigned.m_Form, 77);
}

TEST(Parameterization, MovingTakesTheValuesAndLeavesTheForm)
{
    Parameterization first = tests::parameters({1, 2}, form(77));
    double const * const values = first.m_Values.data();
    Parameterization second(std::move(first));
    EXPECT_EQ(second.m_Values.data(), values);
    EXPECT_EQ(second.m_Form, 77);
    EXPECT_TRUE(first.m_Values.empty()); // NOLINT(bugprone-use-after-move): what is left is told
    EXPECT_EQ(first.m_Form, 77);

    Parameterization third = tests::parameters({3}, form(3));
    third = std::move(second);
    EXPECT_EQ(third.m_Values.data(), values);
    EXPECT_EQ(third.m_Form, 77);
    EXPECT_TRUE(second.m_Values.empty()); // NOLINT(bugprone-use-after-move)
    EXPECT_EQ(second.m_Form, 77);
}

TEST(Parameterization, MovingToItselfChangesNothing)
{
    Parameterization list = tests::parameters({1, 2}, form(77));
    Parameterization & same = list;
    list = std::move(same);
    EXPECT_EQ(list.m_Values, (Values{1, 2}));
    EXPECT_EQ(list.m_Form, 77);
}

} // namespace
} // namespace geom
