// Dimensions, tolerances and datums, and files in which they are damaged.
#include "step/made_documents.h"
#include "step/made_tolerances.h"
#include "step/received_model.h"
#include "support/leftovers.h"

#include <keld-transl/attributes/annotation.h>
#include <keld-transl/attributes/attribute.h>
#include <keld-transl/product/part.h>

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <map>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using tests::ReceivedModel;
using transl_tk::Annotation;

constexpr int Dimension = 11;
constexpr int Tolerance = 12;
constexpr int Datum = 13;

class StepTolerances : public testing::Test
{
protected:
    tests::LeftoverGuard m_Guard;
    tests::TemporaryDirectory m_Files;
    std::string const m_Path = m_Files / "block.step";
};

/// The annotations of a kind, by their first texts or, where it has none, by the kind's word.
std::map<std::string, Annotation *> annotations(ReceivedModel const & received, int kind)
{
    std::map<std::string, Annotation *> result;
    received.model().m_Annotations.m_Entities.forEach([&](int, transl_tk::Base * entity) {
        auto * const annotation = static_cast<Annotation *>(entity);
        if (annotation->getFirstNumber() == kind)
            result[annotation->getFirstText()] = annotation;
    });
    return result;
}

std::vector<double> pointsOf(Annotation & annotation)
{
    double const * const points = annotation.getPoints();
    return points == nullptr ? std::vector<double>()
                             : std::vector<double>(points, points + 3 * annotation.getNumPoints());
}

using TripleGetter = void (Annotation::*)(double & x, double & y, double & z);

std::vector<double> triple(Annotation & annotation, TripleGetter get)
{
    std::vector<double> result(3);
    (annotation.*get)(result[0], result[1], result[2]);
    return result;
}

TEST_F(StepTolerances, DimensionsHaveTheirValuesAndModifiers)
{
    tests::writeTolerances(m_Path);
    ReceivedModel const received(m_Path);
    EXPECT_THAT(received.attributes(Dimension),
                UnorderedElementsAre("linear distance from outer to outer 10 0.125 0.25",
                                     "modifiers statistical tolerance free state condition",
                                     "direction 1 0 0", "presentation 3", "diameter 8",
                                     "class of tolerance H7"));
}

TEST_F(StepTolerances, AnAnnotationHasItsPlaceItsPointsAndItsLines)
{
    tests::writeTolerances(m_Path);
    ReceivedModel const received(m_Path);
    auto const dimensions = annotations(received, Dimension);
    ASSERT_TRUE(dimensions.contains("linear distance outer outer"));
    Annotation & width = *dimensions.at("linear distance outer outer");
    EXPECT_THAT(triple(width, &Annotation::getSecondTriple), ElementsAre(0, 0, 1));
    EXPECT_THAT(triple(width, &Annotation::getThirdTriple), ElementsAre(0, 1, 0));
    EXPECT_EQ(6, width.getSecondNumber());
    EXPECT_STREQ("width drawn", width.getSecondText());
    EXPECT_THAT(pointsOf(width), ElementsAre(7, 8, 9, 9, 8, 7, 0, 0, 0, 0, 0, 11, 0, 12, 11));
    int onShape = 0;
    int lines = 0;
    int unused = 0;
    width.getFirstInts(onShape, lines, unused);
    EXPECT_EQ(2, onShape);
    EXPECT_EQ(1, lines);
}

TEST_F(StepTolerances, TolerancesHaveTheirZoneAndModifiers)
{
    tests::writeTolerances(m_Path);
    ReceivedModel const received(m_Path);
    EXPECT_THAT(received.attributes(Tolerance),
                testing::IsSupersetOf({"position 0.5", "zone diameter",
                                       "material requirement maximum material requirement",
                                       "modifiers free state", "zone modifier projected",
                                       "zone modifier value 0.5"}));
}

TEST_F(StepTolerances, ADatumSystemIsTheIdsOfItsDatumsByTheirPosition)
{
    tests::writeTolerances(m_Path);
    ReceivedModel const received(m_Path);
    auto const datums = annotations(received, Datum);
    ASSERT_TRUE(datums.contains("A"));
    ASSERT_TRUE(datums.contains("B"));
    EXPECT_THAT(received.attributes(Tolerance),
                Contains("datum system " + std::to_string(datums.at("A")->getId()) + " " +
                         std::to_string(datums.at("B")->getId())));
    EXPECT_THAT(received.attributes(Datum),
                UnorderedElementsAre("datum A", "datum B", "position 1", "position 2",
                                     "modifiers maximum material requirement"));
}

TEST_F(StepTolerances, EachIsCounted)
{
    tests::writeTolerances(m_Path);
    ReceivedModel const received(m_Path);
    EXPECT_THAT(received.entries(0), Contains("PMIs: 5 in the file, 5 exact, 0 changed, 0 lost"));
    EXPECT_THAT(received.log(), HasSubstr("Nothing was lost."));
}

TEST_F(StepTolerances, AValueThatTheKernelCannotReadIsMissedAndSaid)
{
    tests::writeTolerances(m_Path);
    // Neither a requirement nor a value.
    tests::replaceInFile(m_Path, "MAXIMUM_MATERIAL_REQUIREMENT", "FREE_STATE");
    tests::replaceInFile(m_Path, "LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(0.5)",
                         "LENGTH_MEASURE_WITH_UNIT(LENGTH_MEASURE(0.)");
    ReceivedModel const received(m_Path);
    EXPECT_THAT(received.attributes(Tolerance), Contains("position"));
    EXPECT_THAT(received.entries(0), Contains("PMIs: 5 in the file, 4 exact, 1 changed, 0 lost"));
    EXPECT_THAT(received.entries(1), Contains("PMIs: 1 position without a value"));
}

TEST_F(StepTolerances, DimensionDataThatMakeTheKernelFailAreLeftOutAndSaid)
{
    tests::writeBrokenTolerances(m_Path);
    ReceivedModel const received(m_Path);
    EXPECT_EQ(8U, received.status());
    EXPECT_EQ((tests::Counts{1, 6, 12, 8}), received.counts());
    EXPECT_TRUE(received.model().m_Annotations.m_Entities.empty());
    EXPECT_THAT(received.entries(2),
                ElementsAre(HasSubstr("PMIs lost: dimensions and tolerances made the kernel "
                                      "fail: OSD_SIGSEGV it followed a reference to nothing")));
    EXPECT_THAT(received.entries(0), Contains("1 entities were lost."));
    EXPECT_THAT(received.attributes(2), ElementsAre("product id block"));
}

} // namespace
