#include "process/stl_files.h"

#include <cstring>
#include <filesystem>
#include <gmock/gmock.h>

namespace {

using testing::HasSubstr;
using tests::Ended;
using tests::facet;
using tests::firstFacet;
using tests::KeldProgram;
using tests::LeftoverGuard;
using tests::solid;
using tests::Triangle;

/// A model of the kit's test translator on its way into an STL file.
class Export
{
public:
    explicit Export(std::string const & model, std::vector<std::string> const & arguments = {})
        : m_Target(m_Keld.file("out.stl", "as it was"))
    {
        m_Keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
        m_Keld.install("stl", KELD_TEST_STL_TRANSLATOR);
        std::vector<std::string> words = {"convert", "-q", model + ".kit", "out.stl"};
        words.insert(words.end(), arguments.begin(), arguments.end());
        m_Ended = m_Keld.run(words);
    }

    Ended const & ended() const { return m_Ended; }
    std::string written() const { return tests::contentOf(m_Target); }

private:
    KeldProgram m_Keld;
    std::string m_Target;
    Ended m_Ended;
};

/// The three floats of the normal of triangle `index` of a binary file.
std::vector<float> normalOf(std::string const & binary, std::size_t index)
{
    std::vector<float> normal(3);
    std::memcpy(normal.data(), &binary.at(84 + 50 * index), 12);
    return normal;
}

TEST(StlExport, WritesBodiesFirstAndTurnsEverySecondTriangleOfAStrip)
{
    LeftoverGuard const guard;
    Export const run("facets", {"-o", "ascii=true"});
    EXPECT_EQ(0, run.ended().code);
    EXPECT_EQ("", run.ended().err);
    EXPECT_EQ(solid("band", firstFacet() + facet("0 0 1", {"0 1 0", "1 0 0", "1 1 0"}) +
                                facet("0 0 1", {"0 0 5", "1 0 5", "0 1 5"})) +
                  solid("a?list", facet("0 0 -1", {"0 0 0", "0 3 0", "4 0 0"}) +
                                      facet("0 0 0", {"0 0 0", "4 0 0", "8 0 0"})) +
                  solid("", facet("-1 0 0", {"0 0 0", "0 0 1", "0 1 0"})),
              run.written());
}

TEST(StlExport, WritesBinaryFilesUnlessToldOtherwise)
{
    LeftoverGuard const guard;
    std::vector<Triangle> const expected = {
        {0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 1, 0, 1, 0, 0, 1, 1, 0}, {0, 0, 5, 1, 0, 5, 0, 1, 5},
        {0, 0, 0, 0, 3, 0, 4, 0, 0}, {0, 0, 0, 4, 0, 0, 8, 0, 0}, {0, 0, 0, 0, 0, 1, 0, 1, 0}};
    for (std::vector<std::string> const & arguments :
         {std::vector<std::string>{}, {"-o", "ascii=false"}}) {
        Export const run("facets", arguments);
        std::string const written = run.written();
        EXPECT_EQ(expected, tests::trianglesOf(written));
        ASSERT_EQ(84U + 6 * 50, written.size());
        EXPECT_EQ("Binary STL, written by keld_stl" + std::string(49, '\0'), written.substr(0, 80));
        EXPECT_EQ((std::vector<float>{0, 0, 1}), normalOf(written, 1));
        EXPECT_EQ((std::vector<float>{0, 0, -1}), normalOf(written, 3));
        EXPECT_EQ((std::vector<float>{0, 0, 0}), normalOf(written, 4));
        EXPECT_EQ((std::vector<float>{-1, 0, 0}), normalOf(written, 5));
        EXPECT_EQ(std::string(2, '\0'), written.substr(84 + 48, 2));
    }
}

TEST(StlExport, PrintsWhatAllMeshesHoldTogether)
{
    LeftoverGuard const guard;
    EXPECT_THAT(Export("facets").ended().out, HasSubstr("  bodies              3\n"
                                                        "  facets              3\n"
                                                        "    triangles                     6\n"
                                                        "    vertices                      16\n"
                                                        "    from                          0 0 0\n"
                                                        "    to                            8 3 5\n"
                                                        "    area                          8\n"));
}

TEST(StlExport, NamesTrianglesThatCannotBeWrittenAndWritesTheRest)
{
    LeftoverGuard const guard;
    Export const run("some-facets");
    EXPECT_EQ(0, run.ended().code);
    EXPECT_EQ("keld_stl: Warning : Triangle 2 of mesh 1 is left out: an index is out of range.\n"
              "keld_stl: Warning : Triangle 3 of mesh 1 is left out: an index is out of range.\n"
              "keld_stl: Warning : Triangle 4 of mesh 1 is left out: a corner is not finite.\n",
              run.ended().err);
    EXPECT_EQ(std::vector<Triangle>{tests::FirstTriangle}, tests::trianglesOf(run.written()));
    EXPECT_THAT(run.ended().out, HasSubstr("triangles                     2\n"));
}

TEST(StlExport, CountsTrianglesThatCannotBeWrittenBeyondTheFirstTen)
{
    LeftoverGuard const guard;
    Export const run("many-facets");
    EXPECT_EQ(0, run.ended().code);
    EXPECT_THAT(run.ended().err,
                HasSubstr("Triangle 11 of mesh 1 is left out: an index is out of range.\n"
                          "keld_stl: Warning : 10 more triangles are left out.\n"));
}

TEST(StlExport, LeavesTheFileAsItWasWhenThereIsNoTriangle)
{
    LeftoverGuard const guard;
    Export const none("no-facets");
    EXPECT_EQ(1, none.ended().code);
    EXPECT_EQ("keld_stl: Error : The model holds no triangles to write; out.stl is not written.\n"
              "keld: out.stl: Failed! Model is empty (exit status 3)\n",
              none.ended().err);
    EXPECT_THAT(none.ended().out, HasSubstr("triangles                     0\n"
                                            "    vertices                      2\n"));
    EXPECT_EQ("as it was", none.written());

    Export const bad("bad-facets");
    EXPECT_EQ(1, bad.ended().code);
    EXPECT_THAT(bad.ended().err, HasSubstr("Failed! Model is empty (exit status 3)\n"));
    EXPECT_EQ("as it was", bad.written());
}

TEST(StlExport, SaysThatTheFolderIsMissing)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("in.stl", tests::binaryStl({tests::FirstTriangle}));
    Ended const ended = keld.run({"convert", "-q", "in.stl", "none/out.stl"});
    EXPECT_EQ(1, ended.code);
    EXPECT_EQ("keld_stl: Error : Cannot write none/out.stl: No such file or directory.\n"
              "keld: none/out.stl: Export procedure failed (exit status 1)\n",
              ended.err);
}

} // namespace
