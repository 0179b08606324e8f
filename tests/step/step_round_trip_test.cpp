// A file - the model - a second translator process - a STEP file - the kernel: the shape stays the
// same. The samples are files that other programs wrote; they do not belong to the project, and the
// tests are skipped where their folder is not there.
#include "step/kernel_reading.h"
#include "step/made_files.h"
#include "step/received_model.h"
#include "step/sent_model.h"
#include "support/leftovers.h"
#include "support/samples.h"

#include <BRepCheck_Analyzer.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <cmath>
#include <filesystem>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::HasSubstr;
using tests::KernelReading;
using tests::LeftoverGuard;
using tests::ReceivedModel;
using tests::SentModel;
using tests::TemporaryDirectory;

constexpr int Colour = 1;
constexpr int Layer = 3;
constexpr int InstanceName = 9;
constexpr int Unit = 10;

void expectNear(double expected, double actual, char const * what)
{
    EXPECT_NEAR(expected, actual, 1e-6 * std::abs(expected)) << what;
}

/// How many there are with all their places.
int countOf(TopoDS_Shape const & shape, TopAbs_ShapeEnum kind)
{
    TopTools_IndexedMapOfShape found;
    TopExp::MapShapes(shape, kind, found);
    return found.Extent();
}

void expectSameShape(KernelReading const & before, KernelReading const & after)
{
    EXPECT_EQ(countOf(before.shape, TopAbs_SOLID), countOf(after.shape, TopAbs_SOLID));
    EXPECT_EQ(countOf(before.shape, TopAbs_FACE), countOf(after.shape, TopAbs_FACE));
    expectNear(before.measures.volume, after.measures.volume, "volume");
    expectNear(before.measures.area, after.measures.area, "area");
    EXPECT_LE(before.measures.centre.Distance(after.measures.centre),
              1e-6 * std::sqrt(before.measures.area));
}

/// What stands beside the shapes.
struct Facts
{
    explicit Facts(std::string const & path)
    {
        ReceivedModel const received(path);
        products = received.productNames();
        instances = received.attributes(InstanceName);
        for (std::string const & colour : received.attributes(Colour))
            colours.insert(colour.substr(colour.find("color")));
        layers = received.attributes(Layer);
        units = received.attributes(Unit);
    }

    std::multiset<std::string> products;
    std::multiset<std::string> instances;
    std::set<std::string> colours;
    std::multiset<std::string> layers;
    std::multiset<std::string> units;
};

void expectSameFacts(Facts const & before, Facts const & after)
{
    EXPECT_EQ(before.products, after.products);
    EXPECT_EQ(before.instances, after.instances);
    EXPECT_EQ(before.colours, after.colours);
    EXPECT_EQ(before.layers, after.layers);
}

class StepSampleRoundTrip : public testing::TestWithParam<char const *>
{
protected:
    void SetUp() override { tests::skipWithoutSamples(); }
};

TEST_P(StepSampleRoundTrip, KeepsShapesNamesAndColours)
{
    LeftoverGuard const guard;
    TemporaryDirectory const files;
    std::string const from = tests::sampleFolder() / GetParam();
    std::string const to = files / "passed.step";
    SentModel const sent = tests::passOn(from, to);
    ASSERT_EQ(8U, sent.status()) << sent.log();

    KernelReading const before = tests::readByKernel(from);
    if (!BRepCheck_Analyzer(before.shape).IsValid())
        std::printf("%s is not valid to begin with, says the kernel.\n", GetParam());
    expectSameShape(before, tests::readByKernel(to));
    expectSameFacts(Facts(from), Facts(to));
}

INSTANTIATE_TEST_SUITE_P(
    Files, StepSampleRoundTrip,
    testing::Values("nist_ctc_01_asme1_ap242-e1.stp", "o3dv_as1_pe_203.stp", "o3dv_as1_pe_203.igs",
                    "o3dv_as1_pe_203.brep", "dm1-id-214.stp", "abstract_pca.step",
                    "red_cube_blue_cylinder.step", "M6-1x12-countersunk-screw.step",
                    "transmission_pulley_at3_t10_center.step", "13_5_hinge_R_assy.stp",
                    "cube_hole.step", "mayo_cube.step", "mayo_cube.iges", "mayo_cube.brep"),
    tests::sampleTestName);

struct MadeShape
{
    char const * name;
    TopoDS_Shape (*make)();
};

template <TopoDS_Shape (*Make)()> TopoDS_Shape mirror()
{
    return tests::mirrored(Make());
}

class StepShapeRoundTrip : public testing::TestWithParam<MadeShape>
{};

TEST_P(StepShapeRoundTrip, KeepsTheShape)
{
    LeftoverGuard const guard;
    TemporaryDirectory const files;
    std::string const from = files / "shape.brep";
    std::string const to = files / "passed.stp";
    tests::writeBrep(GetParam().make(), from);
    SentModel const sent = tests::passOn(from, to);
    ASSERT_EQ(8U, sent.status()) << sent.log();
    EXPECT_THAT(sent.log(), HasSubstr("Nothing was lost."));
    expectSameShape(tests::readByKernel(from), tests::readByKernel(to));
}

INSTANTIATE_TEST_SUITE_P(
    Shapes, StepShapeRoundTrip,
    testing::Values(MadeShape{"CylinderWithSeam", tests::seamedCylinder},
                    MadeShape{"SphereWithPoles", tests::sphere}, MadeShape{"Torus", tests::torus},
                    MadeShape{"ConeWithHyperbola", tests::coneWithHyperbola},
                    MadeShape{"ParabolicPrism", tests::parabolicPrism},
                    MadeShape{"EllipticPrism", tests::ellipticPrism},
                    MadeShape{"BezierPatch", tests::bezierPatch},
                    MadeShape{"OffsetPatch", tests::offsetPatch},
                    MadeShape{"ExtrudedSpline", tests::extrudedSpline},
                    MadeShape{"RevolvedSpline", tests::revolvedSpline},
                    MadeShape{"BoxWithVoid", tests::boxWithVoid},
                    MadeShape{"EdgeAndPoint", tests::edgeAndPoint},
                    MadeShape{"MirroredCylinder", mirror<tests::seamedCylinder>},
                    MadeShape{"MirroredCone", mirror<tests::coneWithHyperbola>},
                    MadeShape{"MirroredSphere", mirror<tests::sphere>},
                    MadeShape{"MirroredTorus", mirror<tests::torus>},
                    MadeShape{"MirroredOffsetPatch", mirror<tests::offsetPatch>}),
    [](testing::TestParamInfo<MadeShape> const & shape) { return std::string(shape.param.name); });

class StepAssemblyRoundTrip : public testing::TestWithParam<char const *>
{};

TEST_P(StepAssemblyRoundTrip, KeepsStructureNamesUnitColoursAndLayers)
{
    LeftoverGuard const guard;
    TemporaryDirectory const files;
    std::string const from = files / "rig.step";
    std::string const to = files / "passed.p21";
    tests::writeRig(from);
    SentModel const sent = tests::passOn(from, to, {{"schema", GetParam()}});
    ASSERT_EQ(8U, sent.status()) << sent.log();
    EXPECT_THAT(sent.log(), HasSubstr("Nothing was lost."));
    Facts const before(from);
    Facts const after(to);
    expectSameFacts(before, after);
    EXPECT_EQ(before.units, after.units);
    EXPECT_EQ((std::multiset<std::string>{"rig", "pair", "plate", "bolt"}), after.products);
    expectSameShape(tests::readByKernel(from), tests::readByKernel(to));
}

INSTANTIATE_TEST_SUITE_P(Schemas, StepAssemblyRoundTrip,
                         testing::Values("ap242", "AP242", "ap214", "AP214"));

} // namespace
