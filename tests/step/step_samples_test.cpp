// Files that other programs wrote. They do not belong to the project: the tests are skipped where
// the folder is not there. What arrives is compared with what the kernel itself reads.
#include "step/kernel_reading.h"
#include "step/received_model.h"
#include "support/leftovers.h"
#include "support/samples.h"

#include <keld-transl/attributes/annotation.h>

#include <cmath>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <regex>

namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using tests::KernelReading;
using tests::LeftoverGuard;
using tests::Measures;
using tests::ReceivedModel;

class StepSamples : public testing::TestWithParam<char const *>
{
protected:
    void SetUp() override { tests::skipWithoutSamples(); }

    std::string path() const { return tests::sampleFolder() / GetParam(); }
};

void expectNear(double expected, double actual, char const * what)
{
    EXPECT_NEAR(expected, actual, 1e-6 * std::abs(expected)) << what;
}

TEST_P(StepSamples, ArriveAsTheKernelReadsThem)
{
    LeftoverGuard const guard;
    ReceivedModel const received(path());
    ASSERT_EQ(8U, received.status()) << received.log();
    KernelReading const expected = tests::readByKernel(path());
    EXPECT_EQ(expected.counts, received.counts());
    if (!expected.productNames.empty()) {
        EXPECT_EQ(expected.productNames, received.productNames());
    }

    std::vector<std::string> faults;
    Measures const measures = tests::measuresOf(received.rebuilt(faults));
    EXPECT_THAT(faults, IsEmpty());
    expectNear(expected.measures.volume, measures.volume, "volume");
    expectNear(expected.measures.area, measures.area, "area");
    EXPECT_LT(expected.measures.centre.Distance(measures.centre),
              1e-6 * std::sqrt(expected.measures.area));
}

/// The counts of a line of the coverage.
struct Line
{
    long long held = 0;
    long long exact = 0;
    long long changed = 0;
    long long lost = 0;
};

/// The lines of the coverage by the names of their kinds.
std::map<std::string, Line> coverageOf(ReceivedModel const & received)
{
    std::map<std::string, Line> lines;
    std::regex const form("(.+): ([0-9]+) in the file, ([0-9]+) exact, ([0-9]+) changed, "
                          "([0-9]+) lost");
    for (std::string const & entry : received.entries(0)) {
        std::smatch found;
        if (std::regex_match(entry, found, form))
            lines[found[1]] = {std::stoll(found[2]), std::stoll(found[3]), std::stoll(found[4]),
                               std::stoll(found[5])};
    }
    return lines;
}

TEST_P(StepSamples, AreCountedAsTheKernelCountsThem)
{
    LeftoverGuard const guard;
    ReceivedModel const received(path());
    auto const lines = coverageOf(received);
    ASSERT_FALSE(lines.empty());
    std::map<std::string, long long> held;
    for (auto const & [kind, line] : lines) {
        EXPECT_EQ(line.held, line.exact + line.changed + line.lost) << kind;
        held[kind] = line.held;
    }
    KernelReading const expected = tests::readByKernel(path());
    for (auto const & [kind, count] : expected.held)
        EXPECT_EQ(count, held[kind]) << kind;
    EXPECT_EQ(static_cast<long long>(expected.counts.vertices), held["Vertex"] + held["Point"]);
    if (!expected.productNames.empty()) {
        EXPECT_EQ(static_cast<long long>(expected.productNames.size()),
                  held["Assembly"] + held["Part"]);
    }
}

class StepSampleFacts : public StepSamples
{};

TEST_P(StepSampleFacts, NothingIsLost)
{
    LeftoverGuard const guard;
    ReceivedModel const received(path());
    EXPECT_THAT(received.entries(2), IsEmpty());
    EXPECT_THAT(received.log(), HasSubstr("Nothing was lost."));
}

class StepSample : public testing::Test
{
protected:
    void SetUp() override { tests::skipWithoutSamples(); }
};

TEST_F(StepSample, DimensionsTolerancesAndDatumsArrive)
{
    LeftoverGuard const guard;
    ReceivedModel const received(tests::sampleFolder() / "nist_ctc_01_asme1_ap242-e1.stp");
    std::map<int, int> kinds;
    received.model().m_Annotations.m_Entities.forEach([&](int, transl_tk::Base * entity) {
        ++kinds[static_cast<transl_tk::Annotation *>(entity)->getFirstNumber()];
    });
    constexpr int Dimension = 11;
    constexpr int Tolerance = 12;
    constexpr int Datum = 13;
    EXPECT_EQ((std::map<int, int>{{Dimension, 12}, {Tolerance, 6}, {Datum, 11}}), kinds);
    EXPECT_THAT(received.attributes(Dimension),
                testing::IsSupersetOf({"diameter 35 0.2 0", "diameter 34.8 35.2",
                                       "angle between 60 0.5 0.5", "qualifier average"}));
    EXPECT_THAT(
        received.attributes(Tolerance),
        testing::IsSupersetOf({HasSubstr("datum system "), HasSubstr("modifiers all around")}));
    EXPECT_THAT(received.attributes(Datum), testing::Contains("datum A"));
}

TEST_F(StepSample, ColoursOfTwoRootsArrive)
{
    LeftoverGuard const guard;
    ReceivedModel const received(tests::sampleFolder() / "red_cube_blue_cylinder.step");
    constexpr int Colour = 1;
    EXPECT_THAT(received.attributes(Colour),
                testing::IsSupersetOf({HasSubstr(" 221 82 40 100"), HasSubstr(" 59 97 180 100")}));
}

auto const Files =
    testing::Values("nist_ctc_01_asme1_ap242-e1.stp", "o3dv_as1_pe_203.stp", "o3dv_as1_pe_203.igs",
                    "o3dv_as1_pe_203.brep", "dm1-id-214.stp", "abstract_pca.step",
                    "red_cube_blue_cylinder.step", "M6-1x12-countersunk-screw.step",
                    "transmission_pulley_at3_t10_center.step", "13_5_hinge_R_assy.stp",
                    "cube_hole.step", "mayo_cube.step", "mayo_cube.iges", "mayo_cube.brep");

INSTANTIATE_TEST_SUITE_P(Files, StepSamples, Files, tests::sampleTestName);
INSTANTIATE_TEST_SUITE_P(Files, StepSampleFacts, Files, tests::sampleTestName);

} // namespace
