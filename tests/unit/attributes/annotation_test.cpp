#include "support/models.h"
#include "support/slots.h"

#include <keld-transl/attributes/annotation.h>

#include <array>
#include <gtest/gtest.h>
#include <vector>

namespace transl_tk {
namespace {

constexpr double First[3] = {1.5, 2.5, 3.5};
constexpr double Second[3] = {4.5, 5.5, 6.5};
constexpr double Third[3] = {7.5, 8.5, 9.5};
constexpr double Fourth[3] = {10.5, 11.5, 12.5};
constexpr double Points[6] = {-1, -2, -3, -4, -5, -6};
constexpr int FirstInts[3] = {1, 2, 3};
constexpr int SecondInts[3] = {4, 5, 6};
constexpr int ThirdInts[3] = {7, 8, 9};
constexpr int FourthInts[3] = {10, 11, 2147483647};

Annotation * anAnnotation(int id, int pointCount = 2, double const * points = Points,
                          char const * text = "text")
{
    return Annotation::create(id, First, Second, Third, Fourth, pointCount, points, FirstInts,
                              SecondInts, ThirdInts, FourthInts, 21, 22, 23, 24, -2147483647 - 1,
                              text, "second");
}

std::array<double, 3> tripleOf(Annotation & annotation,
                               void (Annotation::*getter)(double &, double &, double &))
{
    std::array<double, 3> t{};
    (annotation.*getter)(t[0], t[1], t[2]);
    return t;
}

std::array<int, 3> intsOf(Annotation & annotation, void (Annotation::*getter)(int &, int &, int &))
{
    std::array<int, 3> t{};
    (annotation.*getter)(t[0], t[1], t[2]);
    return t;
}

class AnnotationTest : public testing::Test
{
protected:
    static EntityTable const & table() { return tests::currentSubPool().m_Annotations.m_Entities; }

    tests::ScopedPool m_Pool;
};

TEST_F(AnnotationTest, HoldsEachArgumentInItsPlace)
{
    Annotation & annotation = *anAnnotation(5);
    EXPECT_EQ(annotation.getId(), 5);
    EXPECT_EQ(tripleOf(annotation, &Annotation::getFirstTriple), std::to_array(First));
    EXPECT_EQ(tripleOf(annotation, &Annotation::getSecondTriple), std::to_array(Second));
    EXPECT_EQ(tripleOf(annotation, &Annotation::getThirdTriple), std::to_array(Third));
    EXPECT_EQ(tripleOf(annotation, &Annotation::getFourthTriple), std::to_array(Fourth));
    EXPECT_EQ(intsOf(annotation, &Annotation::getFirstInts), std::to_array(FirstInts));
    EXPECT_EQ(intsOf(annotation, &Annotation::getSecondInts), std::to_array(SecondInts));
    EXPECT_EQ(intsOf(annotation, &Annotation::getThirdInts), std::to_array(ThirdInts));
    EXPECT_EQ(intsOf(annotation, &Annotation::getFourthInts), std::to_array(FourthInts));
    EXPECT_EQ(annotation.getFirstNumber(), 21);
    EXPECT_EQ(annotation.getSecondNumber(), 22);
    EXPECT_EQ(annotation.getThirdNumber(), 23);
    EXPECT_EQ(annotation.getFourthNumber(), 24);
    EXPECT_EQ(annotation.getFifthNumber(), -2147483647 - 1);
    EXPECT_STREQ(annotation.getFirstText(), "text");
    EXPECT_STREQ(annotation.getSecondText(), "second");
}

TEST_F(AnnotationTest, CopiesItsPointsAndTexts)
{
    double points[6] = {-1, -2, -3, -4, -5, -6};
    char text[] = "text";
    Annotation & annotation = *anAnnotation(0, 2, points, text);
    points[0] = 9;
    text[0] = 'X';
    ASSERT_EQ(annotation.getNumPoints(), 2U);
    EXPECT_EQ(std::vector<double>(annotation.getPoints(), annotation.getPoints() + 6),
              std::vector<double>(Points, Points + 6));
    EXPECT_STREQ(annotation.getFirstText(), "text");
}

TEST_F(AnnotationTest, HasNoPointsForACountOfZeroOrBelow)
{
    for (int const count : {0, -1, -2147483647 - 1}) {
        Annotation & annotation = *anAnnotation(0, count);
        EXPECT_EQ(annotation.getNumPoints(), 0U);
        EXPECT_EQ(annotation.getPoints(), nullptr);
    }
}

TEST_F(AnnotationTest, HasNoPointsForANullPointer)
{
    EXPECT_EQ(anAnnotation(0, 2, nullptr)->getNumPoints(), 0U);
}

TEST_F(AnnotationTest, TakesTheIdsOneAndTwoInAnEmptyStore)
{
    EXPECT_EQ(anAnnotation(0)->getId(), 1);
    EXPECT_EQ(anAnnotation(0)->getId(), 2);
}

TEST_F(AnnotationTest, IsNotMadeUnderAnIdInUse)
{
    Annotation * const first = anAnnotation(5);
    EXPECT_EQ(anAnnotation(5, 1, Points, "other"), nullptr);
    EXPECT_EQ(table().size(), 1U);
    EXPECT_EQ(table().lookup(5), first);
    EXPECT_EQ(first->getNumPoints(), 2U);
    EXPECT_STREQ(first->getFirstText(), "text");
}

TEST_F(AnnotationTest, StandsInItsStoreUntilItsEnd)
{
    Annotation * const annotation = anAnnotation(5);
    EXPECT_EQ(table().lookup(5), annotation);
    Annotation::destruct(annotation);
    EXPECT_TRUE(table().empty());
    Annotation::destruct(nullptr);
}

TEST_F(AnnotationTest, GoesWithClear)
{
    anAnnotation(5);
    anAnnotation(-5);
    Pool::getInstance()->clear();
    EXPECT_TRUE(table().empty());
}

TEST_F(AnnotationTest, IsOfKindSixteen)
{
    EXPECT_EQ(anAnnotation(0)->getEntityKind(), 16);
}

TEST_F(AnnotationTest, OperationsStandInTableOrderBehindTheDestructor)
{
    using tests::slotOf;
    EXPECT_EQ(slotOf(&Annotation::getEntityKind), 2U);
    EXPECT_EQ(slotOf(&Annotation::getFirstTriple), 3U);
    EXPECT_EQ(slotOf(&Annotation::getSecondTriple), 4U);
    EXPECT_EQ(slotOf(&Annotation::getThirdTriple), 5U);
    EXPECT_EQ(slotOf(&Annotation::getFourthTriple), 6U);
    EXPECT_EQ(slotOf(&Annotation::getNumPoints), 7U);
    EXPECT_EQ(slotOf(&Annotation::getPoints), 8U);
    EXPECT_EQ(slotOf(&Annotation::getFirstInts), 9U);
    EXPECT_EQ(slotOf(&Annotation::getSecondInts), 10U);
    EXPECT_EQ(slotOf(&Annotation::getThirdInts), 11U);
    EXPECT_EQ(slotOf(&Annotation::getFourthInts), 12U);
    EXPECT_EQ(slotOf(&Annotation::getFirstNumber), 13U);
    EXPECT_EQ(slotOf(&Annotation::getSecondNumber), 14U);
    EXPECT_EQ(slotOf(&Annotation::getThirdNumber), 15U);
    EXPECT_EQ(slotOf(&Annotation::getFourthNumber), 16U);
    EXPECT_EQ(slotOf(&Annotation::getFifthNumber), 17U);
    EXPECT_EQ(slotOf(&Annotation::getFirstText), 18U);
    EXPECT_EQ(slotOf(&Annotation::getSecondText), 19U);
}

} // namespace
} // namespace transl_tk
