// Facets in STL files: where they come from, and where they stand.
#include "export/stl_measures.h"
#include "step/made_files.h"
#include "step/received_model.h"
#include "step/sent_model.h"
#include "support/leftovers.h"

#include <keld-transl/model/point3d.h>
#include <keld-transl/model/pool.h>
#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/tri_strip.h>

#include <array>
#include <cmath>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <limits>

namespace {

using step::StlMeasures;
using testing::AllOf;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;
using tests::SentModel;

constexpr unsigned EmptyModel = 3;
constexpr unsigned Completed = 8;

class StlExport : public testing::Test
{
protected:
    std::string target() const { return m_Files / "out.stl"; }
    StlMeasures written(bool ascii = false) const { return step::measuresOfStl(target(), ascii); }

    std::string rig() const
    {
        std::string const path = m_Files / "rig.step";
        tests::writeRig(path);
        return path;
    }

    tests::LeftoverGuard m_Guard;
    tests::TemporaryDirectory m_Files;
};

/// A tetrahedron with a volume of a sixth, its faces outward.
transl_tk::TriStrip * tetrahedron()
{
    constexpr float Corners[] = {0, 0, 0, 1, 0, 0, 0, 1, 0, 0, 0, 1};
    constexpr int Indices[] = {0, 2, 1, 0, 1, 3, 0, 3, 2, 1, 2, 3};
    return transl_tk::TriStrip::create(0, Corners, nullptr, 4, nullptr, 0, Indices, 12, false);
}

TEST_F(StlExport, EveryPlaceOfEveryPartIsMeshed)
{
    SentModel const sent = tests::passOn(rig(), target());
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    EXPECT_THAT(sent.log(), HasSubstr("STL holds facets alone: structure, colours and exact shapes "
                                      "are left out."));
    StlMeasures const found = written();
    // Two plates, and two bolts of which facets cut something off.
    double const volume = 2 * 40 * 30 * 5 + 2 * M_PI * 9 * 20;
    EXPECT_LT(found.volume, volume);
    EXPECT_NEAR(volume, found.volume, 0.03 * 2 * M_PI * 9 * 20);
    EXPECT_NEAR(100, found.box.CornerMax().X(), 1e-4);
    EXPECT_EQ(84 + 50 * static_cast<std::size_t>(found.count), tests::contentOf(target()).size());
}

TEST_F(StlExport, AFinerDeflectionMakesMoreTriangles)
{
    ASSERT_EQ(Completed, tests::passOn(rig(), target()).status());
    long long const coarse = written().count;
    ASSERT_EQ(Completed, tests::passOn(rig(), target(), {{"deflection", "0.001"}}).status());
    EXPECT_GT(written().count, 2 * coarse);
}

TEST_F(StlExport, AsciiHoldsTheSameTriangles)
{
    ASSERT_EQ(Completed, tests::passOn(rig(), target()).status());
    StlMeasures const binary = written();
    ASSERT_EQ(Completed, tests::passOn(rig(), target(), {{"ascii", "true"}}).status());
    EXPECT_THAT(step::differences(binary, written(true)), IsEmpty());
    EXPECT_THAT(tests::contentOf(target()),
                AllOf(StartsWith("solid "), HasSubstr("solid bolt\n  facet normal "),
                      HasSubstr("endsolid plate\n")));
}

TEST_F(StlExport, FacetsOfTheModelAreTakenAndMirroredOnesLookOutward)
{
    SentModel const sent(target(), [] {
        auto * const part = transl_tk::Part::create(0, "part");
        auto * const body = transl_tk::Body::create(0, "body");
        body->addTriStrip(tetrahedron());
        part->addBody(body);
        auto * const instance = transl_tk::Instance::create(0, part);
        constexpr double Mirror[16] = {-1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, 10, 0, 0, 1};
        instance->setTransform(Mirror);
        transl_tk::Assembly::create(0, "top")->addChild(instance);
    });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    StlMeasures const found = written();
    EXPECT_EQ(4, found.count);
    EXPECT_NEAR(1.0 / 6, found.volume, 1e-6);
    EXPECT_NEAR(9, found.box.CornerMin().X(), 1e-6);
    EXPECT_NEAR(10, found.box.CornerMax().X(), 1e-6);
}

TEST_F(StlExport, FacetsOfNoPartAreTaken)
{
    SentModel const sent(target(), [] {
        tetrahedron();
        transl_tk::Body::create(0, "body")->addTriStrip(tetrahedron());
    });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    EXPECT_EQ(8, written().count);
}

TEST_F(StlExport, AStripAlternates)
{
    SentModel const sent(target(), [] {
        constexpr float Corners[] = {0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0, 1, 1, 0};
        transl_tk::TriStrip::create(0, Corners, nullptr, 5, nullptr, 0, nullptr, 0, false);
    });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    EXPECT_EQ(2, written().count);
    EXPECT_NEAR(1, written().area, 1e-6);
    // Both look up.
    std::string const bytes = tests::contentOf(target());
    for (std::size_t const at : {84U, 134U}) {
        float normal[3];
        bytes.copy(reinterpret_cast<char *>(normal), sizeof(normal), at);
        EXPECT_THAT(normal, ElementsAre(0.0F, 0.0F, 1.0F));
    }
}

TEST_F(StlExport, WhatIsNoTriangleIsLostAloud)
{
    SentModel const sent(target(), [] {
        tetrahedron();
        constexpr float Nan = std::numeric_limits<float>::quiet_NaN();
        constexpr float Corners[] = {0, 0, Nan, 1, 0, 0, 0, 1, 0};
        constexpr int Indices[] = {0, 1, 2, 0, 1, 3};
        transl_tk::TriStrip::create(9, Corners, nullptr, 3, nullptr, 0, Indices, 6, false);
        transl_tk::Point3D::create(4, 1, 2, 3);
    });
    ASSERT_EQ(Completed, sent.status()) << sent.log();
    EXPECT_EQ(4, written().count);
    EXPECT_THAT(sent.log(), HasSubstr("Facet lost: 9: an index is out of range"));
    EXPECT_THAT(sent.log(), HasSubstr("Facet lost: a corner is not finite"));
    EXPECT_THAT(sent.log(), HasSubstr("Point lost: 4: STL takes facets alone"));
}

TEST_F(StlExport, AModelWithoutFacesIsRefused)
{
    SentModel const sent(target(), [] { transl_tk::Point3D::create(0, 1, 2, 3); });
    EXPECT_EQ(EmptyModel, sent.status());
    EXPECT_THAT(sent.log(), HasSubstr("The model holds no facets and no faces; "));
    EXPECT_THAT(m_Files.names(), IsEmpty());
}

TEST_F(StlExport, ADamagedFileDiffers)
{
    ASSERT_EQ(Completed, tests::passOn(rig(), target()).status());
    StlMeasures const good = written();
    std::string bytes = tests::contentOf(target());
    // The last triangle is gone.
    std::ofstream(target(), std::ios::binary) << bytes.substr(0, bytes.size() - 50);
    EXPECT_THAT(step::differences(good, written()),
                testing::Contains(HasSubstr("The number of triangles is")));
    // A corner of the first triangle is elsewhere.
    float const far = 1000;
    bytes.replace(96, sizeof(far), reinterpret_cast<char const *>(&far), sizeof(far));
    std::ofstream(target(), std::ios::binary) << bytes;
    EXPECT_THAT(step::differences(good, written()),
                testing::Contains(HasSubstr("The greatest x is 100 in the model and 1000 in the "
                                            "file.")));
}

} // namespace
