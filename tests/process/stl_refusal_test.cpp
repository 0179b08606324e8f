#include "process/stl_files.h"

#include <filesystem>
#include <gtest/gtest.h>
#include <limits>

namespace {

using tests::binaryStl;
using tests::Ended;
using tests::facet;
using tests::firstFacet;
using tests::FirstTriangle;
using tests::KeldProgram;
using tests::LeftoverGuard;
using tests::SecondTriangle;
using tests::solid;
using tests::Triangle;

constexpr char const * Failed = "Failed! (exit status 0)";
constexpr char const * UnsupportedFileType = "Failed! Unsupported file type (exit status 2)";
constexpr char const * EmptyModel = "Failed! Model is empty (exit status 3)";

/// Expects that `content` is refused with `words`, that nothing of it is printed, and that a file
/// it was to be converted to stays as it was.
void expectRefusal(std::string const & content, std::string const & words, char const * status)
{
    KeldProgram keld;
    keld.file("part.stl", content);
    std::string const target = keld.file("target.stl", "as it was");
    std::string const expected =
        "    Error : " + words + "\nkeld: part.stl: " + std::string(status) + "\n";

    for (Ended const & ended : {keld.run({"import", "-q", "part.stl"}),
                                keld.run({"convert", "-q", "part.stl", "target.stl"})}) {
        EXPECT_EQ(1, ended.code);
        EXPECT_EQ("", ended.out);
        EXPECT_EQ(expected, ended.err);
    }
    EXPECT_EQ("as it was", tests::contentOf(target));
    EXPECT_EQ((std::set<std::string>{"part.stl", "target.stl"}), keld.files().names());
}

TEST(StlRefusal, SaysThatTheFileIsMissing)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    EXPECT_EQ("    Error : Cannot read part.stl: No such file or directory.\n"
              "keld: part.stl: Failed! (exit status 0)\n",
              keld.run({"import", "-q", "part.stl"}).err);
}

TEST(StlRefusal, SaysThatTheFileIsEmpty)
{
    LeftoverGuard const guard;
    expectRefusal("", "part.stl is empty.", EmptyModel);
}

TEST(StlRefusal, SaysThatTheFileHoldsNoTriangle)
{
    LeftoverGuard const guard;
    expectRefusal(binaryStl({}), "part.stl holds no triangle.", EmptyModel);
}

TEST(StlRefusal, SaysThatNoSolidHoldsATriangle)
{
    LeftoverGuard const guard;
    Ended const ended = tests::importStl(solid("N", ""));
    EXPECT_EQ(1, ended.code);
    EXPECT_EQ("", ended.out);
    EXPECT_EQ("    Warning : part.stl, line 1: the solid \"N\" holds no triangle.\n"
              "    Error : part.stl holds no triangle.\n"
              "keld: part.stl: Failed! Model is empty (exit status 3)\n",
              ended.err);
}

TEST(StlRefusal, SaysThatAFileIsNoStlFile)
{
    LeftoverGuard const guard;
    char const * const words =
        "part.stl is no STL file: it is text that does not begin with \"solid\".";
    expectRefusal("ply\nformat ascii 1.0\n", words, UnsupportedFileType);
    expectRefusal("sol", words, UnsupportedFileType);
    expectRefusal("\n", words, UnsupportedFileType);
    expectRefusal(std::string(1000, 'x'), words, UnsupportedFileType);
}

// Binary files.

TEST(StlRefusal, SaysThatABinaryFileIsCutInItsHeader)
{
    LeftoverGuard const guard;
    std::string const content = binaryStl({FirstTriangle}, 1, "solid");
    char const * const start =
        "part.stl is cut short: a binary STL file begins with 84 bytes, and it has ";
    expectRefusal(content.substr(0, 83), start + std::string("83."), Failed);
    expectRefusal(content.substr(0, 6), start + std::string("6."), Failed);
}

TEST(StlRefusal, SaysThatABinaryFileIsCutBehindItsHeader)
{
    LeftoverGuard const guard;
    for (char const * header : {"solid", "some program"}) {
        std::string const content = binaryStl({FirstTriangle, SecondTriangle}, 2, header);
        std::string const words = "part.stl is cut short, or its count is wrong: it announces 2 "
                                  "triangles and has room for ";
        expectRefusal(content.substr(0, content.size() - 1), words + "1.", Failed);
        expectRefusal(content.substr(0, 84), words + "0.", Failed);
    }
}

TEST(StlRefusal, SaysThatTheCountIsTooHigh)
{
    LeftoverGuard const guard;
    expectRefusal(binaryStl({FirstTriangle}, 0xFFFFFFFF),
                  "part.stl is cut short, or its count is wrong: it announces 4294967295 triangles "
                  "and has room for 1.",
                  Failed);
}

TEST(StlRefusal, SaysThatTheCountIsTooLow)
{
    LeftoverGuard const guard;
    expectRefusal(binaryStl({FirstTriangle, SecondTriangle}, 1),
                  "part.stl has a wrong count: it announces 1 triangles and has room for 2.",
                  Failed);
    expectRefusal(binaryStl({FirstTriangle}, 0),
                  "part.stl has a wrong count: it announces 0 triangles and has room for 1.",
                  Failed);
}

TEST(StlRefusal, NamesTheTriangleOfABinaryFileThatIsNotFinite)
{
    LeftoverGuard const guard;
    for (float const bad :
         {std::numeric_limits<float>::quiet_NaN(), std::numeric_limits<float>::infinity(),
          -std::numeric_limits<float>::infinity()}) {
        for (std::size_t const coordinate : {0U, 4U, 8U}) {
            std::vector<Triangle> triangles(9000, FirstTriangle);
            triangles[8500][coordinate] = bad;
            expectRefusal(binaryStl(triangles),
                          "part.stl, triangle 8501: a coordinate is not finite.", Failed);
        }
    }
}

// ASCII files.

TEST(StlRefusal, SaysWhereAnAsciiFileIsCut)
{
    LeftoverGuard const guard;
    std::string const content = solid("N", firstFacet());
    std::string const words = "part.stl is cut short: it ends in line ";
    expectRefusal("solid", words + "1, where \"facet\" or \"endsolid\" is missing.", Failed);
    expectRefusal("solid\r\n", words + "2, where \"facet\" or \"endsolid\" is missing.", Failed);
    expectRefusal(content.substr(0, content.find("endsolid")),
                  words + "9, where \"facet\" or \"endsolid\" is missing.", Failed);
    expectRefusal(content.substr(0, content.find(" 0 1\n")),
                  words + "2, where \"outer\" is missing.", Failed);
    expectRefusal(content.substr(0, content.find(" loop")), words + "3, where \"loop\" is missing.",
                  Failed);
    expectRefusal(content.substr(0, content.find("vertex 1")),
                  words + "5, where \"vertex\" is missing.", Failed);
    expectRefusal(content.substr(0, content.find(" 0\n      vertex 0")),
                  words + "5, where a number is missing.", Failed);
    expectRefusal(content.substr(0, content.find("endloop")),
                  words + "7, where \"endloop\" is missing.", Failed);
    expectRefusal(content.substr(0, content.find("endfacet")),
                  words + "8, where \"endfacet\" is missing.", Failed);
}

TEST(StlRefusal, NamesTheLineOfANumberThatIsNone)
{
    LeftoverGuard const guard;
    for (char const * bad :
         {"nan", "-inf", "1e39", "-1e999", "1,5", "0x10", "1.5f", "++1", "+-1", "endloop"})
        expectRefusal(
            solid("N", facet("0 0 1", {"0 0 0", std::string("1 ") + bad + " 0", "0 1 0"})),
            "part.stl, line 5: \"" + std::string(bad) + "\" is not a finite number.", Failed);
}

TEST(StlRefusal, NamesTheLineOfAWordThatIsOutOfPlace)
{
    LeftoverGuard const guard;
    std::string const triangle = firstFacet();
    auto const refuse = [](std::string const & facets, std::string const & words) {
        expectRefusal(solid("N", facets + "\n"), "part.stl, line " + words, Failed);
    };
    refuse("vertex", "2: \"vertex\" stands in the place of \"facet\" or \"endsolid\".");
    refuse("solid", "2: \"solid\" stands in the place of \"facet\" or \"endsolid\".");
    refuse("facet 0 0 1", "2: \"0\" stands in the place of \"normal\".");
    refuse("facet normal 0 0 1 1\nouter loop", "2: \"1\" stands in the place of \"outer\".");
    refuse("facet normal 0 0 1\nouter\nvertex", "4: \"vertex\" stands in the place of \"loop\".");
    refuse("facet normal 0 0 1\nouter loop\n7", "4: \"7\" stands in the place of \"vertex\".");
    refuse(facet("0 0 1", {"0 0 0", "1 0 0", "0 1 0\nvertex 1 1 1"}),
           "7: \"vertex\" stands in the place of \"endloop\".");
    refuse("facet normal\nouter loop\nvertex 0 0 0 vertex 1 0 0 vertex 0 1 0 endloop\r\rfacet",
           "6: \"facet\" stands in the place of \"endfacet\".");
}

TEST(StlRefusal, MakesNoBodyOfTheSolidsBeforeTheFault)
{
    LeftoverGuard const guard;
    expectRefusal(solid("one", firstFacet()) + "solid two",
                  "part.stl is cut short: it ends in line 10, where \"facet\" or \"endsolid\" is "
                  "missing.",
                  Failed);
}

TEST(StlRefusal, QuotesForeignBytesSoThatTheyDoNoHarm)
{
    LeftoverGuard const guard;
    expectRefusal("solid N\n" + std::string(600, ' ') + "\x1b[2J\xff" + std::string(100, 'y'),
                  "part.stl, line 2: \"?[2J?" + std::string(35, 'y') +
                      "...\" stands in the place of \"facet\" or \"endsolid\".",
                  Failed);
}

} // namespace
