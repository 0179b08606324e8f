// Files that other programs wrote. They do not belong to the project: the tests are skipped where
// the folder is not there.
#include "process/stl_files.h"
#include "support/samples.h"

#include <filesystem>
#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;
using tests::Triangle;

class StlSamples : public testing::Test
{
protected:
    void SetUp() override { tests::skipWithoutSamples(); }

    /// Expects that `file` holds so many triangles, converts it to both forms, and returns what
    /// stands in them.
    static std::vector<Triangle> read(std::string const & file, int triangles, int vertices)
    {
        KeldProgram keld;
        std::filesystem::create_symlink(tests::sampleFolder() / file, keld.files() / "in.stl");
        std::string const counts = "  bodies              1\n"
                                   "  facets              1\n"
                                   "    triangles                     " +
                                   std::to_string(triangles) +
                                   "\n"
                                   "    vertices                      " +
                                   std::to_string(vertices) + "\n";

        Ended const ended = keld.run({"convert", "-q", "in.stl", "binary.stl"});
        EXPECT_EQ(0, ended.code);
        EXPECT_EQ("", ended.err);
        EXPECT_THAT(ended.out, HasSubstr(counts));

        EXPECT_EQ(0, keld.run({"convert", "-q", "-o", "ascii=true", "in.stl", "ascii.stl"}).code);
        EXPECT_THAT(keld.run({"convert", "-q", "ascii.stl", "again.stl"}).out, HasSubstr(counts));
        EXPECT_TRUE(tests::contentOf(keld.files() / "binary.stl") ==
                    tests::contentOf(keld.files() / "again.stl"));
        return tests::trianglesOf(tests::contentOf(keld.files() / "binary.stl"));
    }
};

/// Expects the same triangles, but for what an ASCII file with six decimals loses.
void expectTwins(std::vector<Triangle> const & some, std::vector<Triangle> const & others)
{
    ASSERT_EQ(some.size(), others.size());
    for (std::size_t i = 0; i < some.size(); ++i) {
        for (std::size_t k = 0; k < some[i].size(); ++k)
            ASSERT_NEAR(some[i][k], others[i][k], 1e-6) << "triangle " << i;
    }
}

TEST_F(StlSamples, SpiderIsTheSameInBothForms)
{
    LeftoverGuard const guard;
    expectTwins(read("Spider_binary.stl", 1368, 722), read("Spider_ascii.stl", 1368, 722));
}

TEST_F(StlSamples, CubeIsTheSameInBothForms)
{
    LeftoverGuard const guard;
    expectTwins(read("mayo_cube_bin.stl", 12, 8), read("mayo_cube_ascii.stl", 12, 8));
}

TEST_F(StlSamples, BinaryFilesKeepTheirTriangles)
{
    LeftoverGuard const guard;
    for (auto const & [name, triangles, vertices] :
         {std::tuple("low_poly_benchy.stl", 984, 484), {"utah_teapot.stl", 9438, 4719}}) {
        std::vector<Triangle> const kept = read(name, triangles, vertices);
        EXPECT_TRUE(kept == tests::trianglesOf(tests::contentOf(tests::sampleFolder() / name)))
            << name;
    }
}

} // namespace
