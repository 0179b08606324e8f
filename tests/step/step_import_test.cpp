// What stands beside the geometry: structure, units, colours, layers, facets, and files that are
// none.
#include "step/kernel_reading.h"
#include "step/made_files.h"
#include "step/received_model.h"
#include "support/leftovers.h"

#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>
#include <keld-transl/topology/tri_strip.h>

#include <cmath>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <regex>

namespace {

using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::UnorderedElementsAre;
using tests::Measures;
using tests::ReceivedModel;

constexpr int Colour = 1;
constexpr int Product = 2;
constexpr int Layer = 3;
constexpr int InstanceName = 9;
constexpr int Unit = 10;
constexpr int Error = 2;

class StepImport : public testing::Test
{
protected:
    std::string rig() const
    {
        std::string const path = m_Files / "rig.step";
        tests::writeRig(path);
        return path;
    }

    std::string file(std::string const & name, std::string const & content) const
    {
        std::ofstream(m_Files / name, std::ios::binary) << content;
        return m_Files / name;
    }

    tests::LeftoverGuard m_Guard;
    tests::TemporaryDirectory m_Files;
};

/// Triangles of all bodies.
int facetCount(ReceivedModel const & received)
{
    int count = 0;
    received.model().m_TriStrips.m_Entities.forEach([&](int, transl_tk::Base * entity) {
        float * vertices = nullptr;
        float * normals = nullptr;
        unsigned char * colours = nullptr;
        int * indices = nullptr;
        int vertexCount = 0;
        int normalCount = 0;
        int indexCount = 0;
        static_cast<transl_tk::TriStrip *>(entity)->getData(vertices, colours, vertexCount, normals,
                                                            normalCount, indices, indexCount);
        count += indexCount / 3;
    });
    return count;
}

TEST_F(StepImport, FacetsAreCounted)
{
    ReceivedModel const received(rig(), {{"deflection", 0.1}});
    std::string const count = std::to_string(facetCount(received));
    EXPECT_THAT(received.entries(0), Contains("Facet: " + count + " in the file, " + count +
                                              " exact, 0 changed, 0 lost"));
}

TEST_F(StepImport, EachProductArrivesOnceAndEachPlaceIsAnInstance)
{
    ReceivedModel const received(rig());
    EXPECT_THAT(received.productNames(), UnorderedElementsAre("rig", "pair", "plate", "bolt"));
    EXPECT_THAT(received.attributes(InstanceName),
                UnorderedElementsAre("instance name left bolt", "instance name right bolt",
                                     "instance name lower plate", "instance name turned plate",
                                     "instance name blue pair"));
    EXPECT_EQ(2U, received.counts().solids);
}

TEST_F(StepImport, PlacesAreWhereTheFileHasThem)
{
    ReceivedModel const received(rig());
    std::vector<std::string> faults;
    Measures const measures = tests::measuresOf(received.rebuilt(faults));
    double const volume = 2 * 40 * 30 * 5 + 2 * M_PI * 9 * 20;
    EXPECT_NEAR(volume, measures.volume, 1e-6 * volume);

    bool found = false;
    received.model().m_Hierarchies.m_Entities.forEach([&](int, transl_tk::Base * entity) {
        auto * const node = static_cast<transl_tk::Hierarchy *>(entity);
        double m[16];
        node->getTransform(m);
        if (std::abs(m[12] - 100) > 1e-9)
            return;
        found = true;
        // A quarter turn about z: x goes to y.
        EXPECT_NEAR(0, m[0], 1e-12);
        EXPECT_NEAR(1, m[1], 1e-12);
        EXPECT_NEAR(-1, m[4], 1e-12);
        EXPECT_EQ(1, m[15]);
    });
    EXPECT_TRUE(found);
}

TEST_F(StepImport, TheFilesUnitIsKeptAndGeometryIsInMillimetres)
{
    ReceivedModel const received(rig());
    EXPECT_THAT(received.attributes(Unit), ElementsAre("length unit INCH"));
    received.model().m_Hierarchies.m_Entities.forEach([&](int, transl_tk::Base * entity) {
        auto * const node = static_cast<transl_tk::Hierarchy *>(entity);
        if (node->getHierarchyType() == transl_tk::Hierarchy::Part) {
            EXPECT_EQ(transl_tk::Units::Inch,
                      static_cast<transl_tk::Part *>(node)->getUnits()->getLengthType());
        }
    });
}

TEST_F(StepImport, ColoursAndLayersArrive)
{
    ReceivedModel const received(rig());
    EXPECT_THAT(received.attributes(Colour),
                UnorderedElementsAre("surface color 255 0 0 100", "surface color 0 255 0 100",
                                     "surface color 0 0 255 100"));
    EXPECT_THAT(received.attributes(Layer), ElementsAre("layer base"));
    EXPECT_THAT(received.attributes(Product), Contains("product id plate"));
}

TEST_F(StepImport, FacetsComeOnRequestAlone)
{
    EXPECT_TRUE(ReceivedModel(rig()).model().m_TriStrips.m_Entities.empty());
}

TEST_F(StepImport, FacetsHaveNormalsAndTheColoursOfTheirFaces)
{
    ReceivedModel const received(rig(), {{"deflection", 0.1}});
    ASSERT_EQ(2U, received.model().m_TriStrips.m_Entities.size());
    float * vertices = nullptr;
    float * normals = nullptr;
    unsigned char * colours = nullptr;
    int * indices = nullptr;
    int vertexCount = 0;
    int normalCount = 0;
    int indexCount = 0;
    // The plate: six faces of four vertices and two triangles each.
    int green = 0;
    int red = 0;
    received.model().m_TriStrips.m_Entities.forEach([&](int, transl_tk::Base * entity) {
        static_cast<transl_tk::TriStrip *>(entity)->getData(vertices, colours, vertexCount, normals,
                                                            normalCount, indices, indexCount);
        EXPECT_EQ(vertexCount, normalCount);
        if (vertexCount != 24)
            return;
        EXPECT_EQ(36, indexCount);
        for (int i = 0; i < vertexCount; ++i) {
            red += colours[3 * i] == 255 ? 1 : 0;
            green += colours[3 * i + 1] == 255 ? 1 : 0;
            // The plate lies in the positive octant: outward means away from its middle.
            float const outward = normals[3 * i] * (vertices[3 * i] - 20) +
                                  normals[3 * i + 1] * (vertices[3 * i + 1] - 15) +
                                  normals[3 * i + 2] * (vertices[3 * i + 2] - 2.5F);
            EXPECT_GT(outward, 0);
        }
    });
    EXPECT_EQ(4, green);
    EXPECT_EQ(20, red);
}

TEST_F(StepImport, ATooSmallDeflectionIsRaisedWithAWarning)
{
    ReceivedModel const received(rig(), {{"deflection", 1e-7}});
    EXPECT_EQ(8U, received.status());
    // A hundred-thousandth of the diagonals of plate and bolt.
    EXPECT_THAT(received.log(),
                HasSubstr("A deflection of 1e-07 mm would make too many facets of a part of "
                          "50.25 mm; it is raised to 0.0005025 mm."));
    EXPECT_THAT(received.log(), HasSubstr("of 21.73 mm; it is raised to 0.0002173 mm."));
    // As many as the bolt's wall and its two ends need for that, and no more.
    double const step = 2 * std::acos(1 - 0.0002173 / 3);
    EXPECT_THAT(static_cast<double>(facetCount(received)),
                testing::AllOf(testing::Gt(2 * M_PI / step), testing::Lt(20 * M_PI / step)));
}

TEST_F(StepImport, CoverageNamesEveryKind)
{
    ReceivedModel const received(rig());
    EXPECT_THAT(received.entries(0),
                testing::IsSupersetOf({"Assembly: 2 in the file, 2 exact, 0 changed, 0 lost",
                                       "Part: 2 in the file, 2 exact, 0 changed, 0 lost",
                                       "Instance: 5 in the file, 5 exact, 0 changed, 0 lost",
                                       "Face: 9 in the file, 9 exact, 0 changed, 0 lost",
                                       "Nothing was lost."}));
}

TEST_F(StepImport, AFileIsToldByItsContent)
{
    std::filesystem::rename(rig(), m_Files / "rig.igs");
    ReceivedModel const received(m_Files / "rig.igs");
    EXPECT_EQ(8U, received.status());
    EXPECT_THAT(received.log(),
                HasSubstr("is a STEP file, although it is named like an IGES file."));
}

TEST_F(StepImport, OtherFilesAreRefused)
{
    ReceivedModel const received(file("notes.step", "These are no shapes.\n"));
    EXPECT_EQ(2U, received.status());
    EXPECT_THAT(received.log(), HasSubstr("is no STEP, IGES or BREP file."));
}

TEST_F(StepImport, AnEmptyFileIsAnEmptyModel)
{
    ReceivedModel const received(file("empty.step", ""));
    EXPECT_EQ(3U, received.status());
}

TEST_F(StepImport, ALostFaceIsSaidWithItsEntity)
{
    // The first plane refers to a placement that is not there.
    std::string text = tests::contentOf(rig());
    std::smatch plane;
    ASSERT_TRUE(std::regex_search(text, plane, std::regex("(#[0-9]+) = PLANE\\('',#[0-9]+\\)")));
    std::string const entity = plane[1];
    std::string const damaged =
        std::string(plane.prefix()) + entity + " = PLANE('',#999999)" + std::string(plane.suffix());
    std::smatch face;
    ASSERT_TRUE(std::regex_search(
        text, face, std::regex("(#[0-9]+) = ADVANCED_FACE\\('',\\([^)]*\\)," + entity + ",")));

    ReceivedModel const received(file("damaged.step", damaged));
    EXPECT_EQ(8U, received.status());
    EXPECT_EQ(8U, received.counts().faces);
    EXPECT_THAT(received.entries(Error),
                Contains(HasSubstr("Face lost: " + std::string(face[1]) + ": ")));
    EXPECT_THAT(received.entries(Error), Contains(HasSubstr("Surface lost: " + entity + ": ")));
    EXPECT_THAT(received.entries(0), Contains("Face: 9 in the file, 8 exact, 0 changed, 1 lost"));
    EXPECT_THAT(received.log(), HasSubstr("2 entities were lost."));
    EXPECT_THAT(received.log(), Not(HasSubstr("Nothing was lost.")));
}

TEST_F(StepImport, AFileThatIsCutFailsWithASentence)
{
    std::string const path = rig();
    std::string const whole = tests::contentOf(path);
    ReceivedModel const received(file("cut.step", whole.substr(0, whole.size() / 2)));
    EXPECT_EQ(0U, received.status());
    EXPECT_THAT(received.log(),
                HasSubstr("cut.step is cut or damaged: it could not be read as a STEP file."));
}

} // namespace
