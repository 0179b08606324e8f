// Models that a STEP file cannot take as they are, models that the tests build themselves, and
// targets that cannot be written.
#include "step/export_fixture.h"

#include <keld-transl/attributes/annotation.h>
#include <keld-transl/attributes/attribute.h>
#include <keld-transl/geom/line.h>
#include <keld-transl/geom/line_strip.h>
#include <keld-transl/model/point3d.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/tri_strip.h>

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;
using tests::addInstance;
using tests::Completed;
using tests::EmptyModel;
using tests::ExportFailed;
using tests::Identity;
using tests::ReceivedModel;
using tests::SentModel;
using tests::UnsupportedFileType;
using transl_tk::Assembly;
using transl_tk::Instance;
using transl_tk::Part;

class StepExport : public tests::ExportFixture
{};

TEST_F(StepExport, NamesOfAllScriptsComeBack)
{
    std::string const name = "Gr\xc3\xb6\xc3\x9f"
                             "e 'a\\b' \xe6\xad\xaf";
    SentModel const sent =
        sendWith(tests::torus(), [&](Part & part) { part.setSecondLabel(name.c_str()); });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    EXPECT_THAT(ReceivedModel(target()).productNames(), ElementsAre(name));
}

TEST_F(StepExport, IdAndDescriptionOfAProductComeBack)
{
    SentModel const sent = sendWith(tests::torus(), [](Part & part) {
        part.setFirstLabel("T-4711");
        auto * const description =
            transl_tk::Attribute::create("product description", transl_tk::Attribute::Product);
        description->addValue("a ring");
        description->addEntity(&part);
    });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    EXPECT_THAT(ReceivedModel(target()).attributes(transl_tk::Attribute::Product),
                UnorderedElementsAre("product id T-4711", "product description a ring"));
}

TEST_F(StepExport, WhatSTEPHasNoPlaceForIsLostAloud)
{
    SentModel const sent = sendWith(tests::torus(), [](Part & part) {
        auto * const own =
            transl_tk::Attribute::create("mood", static_cast<transl_tk::Attribute::Type>(77));
        own->addEntity(&part);
        constexpr double Zero[3] = {0, 0, 0};
        constexpr int None[3] = {0, 0, 0};
        part.addAnnotation(transl_tk::Annotation::create(3, Zero, Zero, Zero, Zero, 0, nullptr,
                                                         None, None, None, None, 0, 0, 0, 0, 0,
                                                         "note", ""));
    });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    EXPECT_THAT(sent.log(), HasSubstr("Attributes lost: \"mood\": attributes of the type 77 have "
                                      "no place in STEP"));
    EXPECT_THAT(sent.log(), HasSubstr("PMIs lost: 3: dimensions and notes are not written"));
    EXPECT_THAT(sent.log(), HasSubstr("2 entities were lost."));
}

TEST_F(StepExport, AColourOfAnInstanceThatIsNotWrittenIsLostAloud)
{
    // The kernel writes the colour of an assembly's place only for parts that are one solid.
    SentModel const sent = sendWith(tests::bezierPatch(), [](Part & part) {
        Assembly * const inner = Assembly::create(0, "inner");
        addInstance(*inner, part, Identity);
        Instance * const instance = Instance::create(0, inner);
        Assembly::create(0, "top")->addChild(instance);
        auto * const colour =
            transl_tk::Attribute::create("color", static_cast<transl_tk::Attribute::Type>(1));
        constexpr unsigned char Values[] = {10, 20, 30, 100};
        for (unsigned char const value : Values)
            colour->addValue(value);
        colour->addEntity(instance);
    });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    EXPECT_THAT(sent.log(),
                HasSubstr("Attributes lost: the colour 10 20 30 255 of an instance of \"inner\""));
}

TEST_F(StepExport, PointsOfNoPartAreAProductOfTheirOwn)
{
    SentModel const sent = send([] {
        transl_tk::Point3D::create(0, 1, 2, 3);
        transl_tk::Point3D::create(0, 4, 5, 6);
    });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    EXPECT_THAT(sent.log(), HasSubstr("1 shapes of no part as a product of their own"));
    ReceivedModel const received(target());
    EXPECT_EQ(2U, received.model().m_Points.m_Entities.size());
    EXPECT_THAT(received.productNames(), ElementsAre("out"));
}

TEST_F(StepExport, CurvesWithEndsAreWrittenAndEndlessOnesAreLost)
{
    SentModel const sent = send([] {
        auto * const strip = geom::LineStrip::create({});
        strip->addPoint(0, 0, 0);
        strip->addPoint(3, 0, 0);
        strip->addPoint(3, 4, 0);
        transl_tk::Curve3D::create(1, strip);
        constexpr double Point[3] = {0, 0, 0};
        constexpr double Direction[3] = {0, 0, 1};
        transl_tk::Curve3D::create(2, geom::Line::create(Point, Direction, {}));
    });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    EXPECT_THAT(sent.log(), HasSubstr("Curve: 1 line strip as B-spline curve"));
    EXPECT_THAT(sent.log(), HasSubstr("Curve lost: 2: the curve has no ends"));
    EXPECT_EQ(1U, ReceivedModel(target()).model().m_Edges.m_Entities.size());
}

TEST_F(StepExport, FacetsAloneAreRefused)
{
    SentModel const sent = send([] {
        constexpr float Corners[] = {0, 0, 0, 1, 0, 0, 0, 1, 0};
        transl_tk::Body::create(5, "mesh")->addTriStrip(
            transl_tk::TriStrip::create(0, Corners, nullptr, 3, nullptr, 0, nullptr, 0, false));
    });
    EXPECT_EQ(EmptyModel, sent.status());
    EXPECT_THAT(sent.log(), HasSubstr("Body lost: 5: it has no exact shape; facets are written to "
                                      "STL alone"));
    EXPECT_THAT(sent.log(), HasSubstr("The model holds nothing that STEP can take; "));
    EXPECT_THAT(m_Files.names(), IsEmpty());
}

TEST_F(StepExport, AnEmptyModelIsRefused)
{
    SentModel const sent = send([] {});
    EXPECT_EQ(EmptyModel, sent.status());
    EXPECT_THAT(sent.log(), HasSubstr("out.step is not written."));
    EXPECT_THAT(m_Files.names(), IsEmpty());
}

TEST_F(StepExport, APartWithoutShapesIsAnEmptyProduct)
{
    SentModel const sent = send([] {
        Assembly * const top = Assembly::create(0, "top");
        addInstance(*top, *Part::create(0, "nothing"), Identity);
    });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    EXPECT_THAT(tests::contentOf(target()),
                AllOf(HasSubstr("PRODUCT('nothing','nothing'"), HasSubstr("PRODUCT('top','top'")));
}

TEST_F(StepExport, AShapeThatTheFileDoesNotKeepFailsTheExportAndTheOldFileStays)
{
    std::ofstream(target()) << "old";
    // The kernel turns round what is inside out when it reads it.
    SentModel const sent = sendWith(tests::insideOutBox(), [](Part &) {});
    EXPECT_EQ(ExportFailed, sent.status());
    EXPECT_THAT(sent.log(),
                HasSubstr("The volume of \"shape\" is -6000 in the model and 6000 in the file."));
    EXPECT_THAT(sent.log(), HasSubstr("was read back and is not the model; the file is dropped."));
    EXPECT_EQ("old", tests::contentOf(target()));
    EXPECT_THAT(m_Files.names(), UnorderedElementsAre("out.step", "shape.brep"));
}

TEST_F(StepExport, AnotherSchemaIsRefused)
{
    SentModel const sent =
        send([] { transl_tk::Point3D::create(0, 1, 2, 3); }, {{"schema", "ap203"}});
    EXPECT_EQ(ExportFailed, sent.status());
    EXPECT_THAT(sent.log(),
                HasSubstr("There is no schema \"ap203\": the values are ap242 and ap214."));
}

TEST_F(StepExport, TheHeaderNamesSchemaFileAndWriter)
{
    auto const point = [] { transl_tk::Point3D::create(0, 1, 2, 3); };
    ASSERT_EQ(Completed, send(point).status());
    EXPECT_THAT(tests::contentOf(target()),
                AllOf(HasSubstr("AP242_MANAGED_MODEL_BASED_3D_ENGINEERING_MIM_LF {1 0 10303 442"),
                      HasSubstr("FILE_NAME('out.step'"), HasSubstr("'keld_step'")));
    ASSERT_EQ(Completed, send(point, {{"schema", "ap214"}}).status());
    EXPECT_THAT(tests::contentOf(target()), HasSubstr("AUTOMOTIVE_DESIGN"));
}

TEST_F(StepExport, OtherSuffixesAreRefused)
{
    SentModel const sent(target("out.obj"), [] { transl_tk::Point3D::create(0, 1, 2, 3); });
    EXPECT_EQ(UnsupportedFileType, sent.status());
    EXPECT_THAT(sent.log(), HasSubstr("the name must end in .step, .stp or .p21 for STEP, or in "
                                      ".stl for facets."));
}

TEST_F(StepExport, AFolderThatIsMissingFailsWithASentence)
{
    SentModel const sent(target("missing/out.step"),
                         [] { transl_tk::Point3D::create(0, 1, 2, 3); });
    EXPECT_EQ(ExportFailed, sent.status());
    EXPECT_THAT(sent.log(), HasSubstr("missing/out.step: No such file or directory."));
}

TEST_F(StepExport, ADeviceIsNotWritten)
{
    std::filesystem::create_symlink("/dev/full", target("full.step"));
    SentModel const sent(target("full.step"), [] { transl_tk::Point3D::create(0, 1, 2, 3); });
    EXPECT_EQ(ExportFailed, sent.status());
    EXPECT_THAT(sent.log(), HasSubstr("full.step: it is no regular file."));
}

TEST_F(StepExport, AFileThatCannotGrowFailsAndTheOldOneStays)
{
    std::ofstream(target()) << "old";
    std::string const wrapper = m_Files / "limited.sh";
    std::ofstream(wrapper) << "#!/bin/sh\ntrap '' XFSZ\nulimit -f 2\nexec '"
                           << KELD_TEST_STEP_TRANSLATOR << "' \"$@\"\n";
    std::filesystem::permissions(wrapper, std::filesystem::perms::owner_all);
    SentModel const sent(
        target(), [] { transl_tk::Point3D::create(0, 1, 2, 3); }, {}, wrapper);
    EXPECT_EQ(ExportFailed, sent.status());
    EXPECT_THAT(sent.log(), HasSubstr("out.step: File too large."));
    EXPECT_EQ("old", tests::contentOf(target()));
    EXPECT_THAT(m_Files.names(), UnorderedElementsAre("out.step", "limited.sh"));
}

} // namespace
