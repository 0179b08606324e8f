#include "process/stl_files.h"

#include <algorithm>
#include <cmath>
#include <filesystem>
#include <gmock/gmock.h>
#include <numbers>

namespace {

using testing::HasSubstr;
using tests::asciiOf;
using tests::binaryStl;
using tests::Ended;
using tests::facet;
using tests::firstFacet;
using tests::FirstTriangle;
using tests::importStl;
using tests::KeldProgram;
using tests::LeftoverGuard;
using tests::secondFacet;
using tests::SecondTriangle;
using tests::solid;
using tests::Triangle;

std::string replaced(std::string text, std::string const & old, std::string const & other)
{
    for (std::size_t at = 0; (at = text.find(old, at)) != text.npos; at += other.size())
        text.replace(at, old.size(), other);
    return text;
}

std::string upperCase(std::string text)
{
    std::transform(text.begin(), text.end(), text.begin(),
                   [](char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 32) : c; });
    return text;
}

std::string const Plain = solid("N", firstFacet() + secondFacet());

TEST(StlImport, PrintsTrianglesVerticesBoxAndArea)
{
    LeftoverGuard const guard;
    Ended const ended = importStl(binaryStl({{-1, 0, 0.1F, 2, 0, 0.1F, -1, 4, 0.1F}}));
    EXPECT_EQ(0, ended.code);
    EXPECT_EQ("part.stl: Completed! (exit status 8)\n"
              "  bodies              1\n"
              "  facets              1\n"
              "    triangles                     1\n"
              "    vertices                      3\n"
              "    from                          -1 0 0.1\n"
              "    to                            2 4 0.1\n"
              "    area                          6\n",
              ended.out);
    EXPECT_EQ("", ended.err);
}

TEST(StlImport, ReadsTheSameFromBothForms)
{
    LeftoverGuard const guard;
    EXPECT_EQ(replaced(Plain, "N", "part"), asciiOf(binaryStl({FirstTriangle, SecondTriangle})));
    EXPECT_EQ(Plain, asciiOf(Plain));
}

TEST(StlImport, MakesEqualCornersOneVertex)
{
    LeftoverGuard const guard;
    std::string const merged = "triangles                     2\n"
                               "    vertices                      4\n";
    EXPECT_THAT(importStl(binaryStl({FirstTriangle, SecondTriangle})).out, HasSubstr(merged));
    EXPECT_THAT(importStl(Plain).out, HasSubstr(merged));
}

TEST(StlImport, TakesMinusZeroForZero)
{
    LeftoverGuard const guard;
    std::string const merged = "vertices                      4\n";
    Triangle second = SecondTriangle;
    second[1] = -0.0F;
    EXPECT_THAT(importStl(binaryStl({FirstTriangle, second})).out, HasSubstr(merged));
    EXPECT_THAT(importStl(replaced(Plain, "vertex 1 0 0\n      vertex 1 1",
                                   "vertex 1 -0.0 -0\n vertex 1 1"))
                    .out,
                HasSubstr(merged));
}

TEST(StlImport, KeepsVerticesThatDifferInOneBitApart)
{
    LeftoverGuard const guard;
    for (std::size_t coordinate = 0; coordinate < 3; ++coordinate) {
        Triangle second = SecondTriangle;
        second[coordinate] = std::nextafter(second[coordinate], 2.0F);
        EXPECT_THAT(importStl(binaryStl({FirstTriangle, second})).out,
                    HasSubstr("vertices                      5\n"));
    }
}

TEST(StlImport, KeepsTrianglesOfNoArea)
{
    LeftoverGuard const guard;
    Ended const ended = importStl(binaryStl({FirstTriangle, {}, {0, 0, 0, 1, 1, 1, 2, 2, 2}}));
    EXPECT_THAT(ended.out, HasSubstr("triangles                     3\n"
                                     "    vertices                      5\n"));
    EXPECT_THAT(ended.out, HasSubstr("area                          0.5\n"));
    EXPECT_EQ("", ended.err);
}

// Binary files.

TEST(StlImport, ReadsABinaryFileThatBeginsWithSolid)
{
    LeftoverGuard const guard;
    std::string const header = "solid facet normal\nouter loop";
    EXPECT_EQ(solid("part", firstFacet()), asciiOf(binaryStl({FirstTriangle}, 1, header)));
    std::string const blanks = "solid" + std::string(75, ' ');
    EXPECT_EQ(solid("part", firstFacet()), asciiOf(binaryStl({FirstTriangle}, 1, blanks)));
}

TEST(StlImport, PassesOverWhatStandsBehindTheLastTriangleOfABinaryFile)
{
    LeftoverGuard const guard;
    Ended const ended =
        importStl(binaryStl({FirstTriangle, SecondTriangle}) + std::string(57, 'x'));
    EXPECT_EQ(0, ended.code);
    EXPECT_THAT(ended.out, HasSubstr("triangles                     2\n"));
    EXPECT_EQ("    Warning : part.stl: the last 57 bytes, behind all triangles, are passed over.\n",
              ended.err);
}

/// A closed ring tube of `rows` times `columns` quads.
std::vector<Triangle> torus(int rows, int columns)
{
    auto const put = [&](Triangle & triangle, std::size_t corner, int row, int column) {
        double const u = 2 * std::numbers::pi * (row % rows) / rows;
        double const v = 2 * std::numbers::pi * (column % columns) / columns;
        triangle[3 * corner] = static_cast<float>((30 + 10 * std::cos(v)) * std::cos(u) + 50);
        triangle[3 * corner + 1] = static_cast<float>((30 + 10 * std::cos(v)) * std::sin(u) + 50);
        triangle[3 * corner + 2] = static_cast<float>(10 * std::sin(v) + 50);
    };
    std::vector<Triangle> triangles;
    for (int row = 0; row < rows; ++row) {
        for (int column = 0; column < columns; ++column) {
            for (int half = 0; half < 2; ++half) {
                Triangle & triangle = triangles.emplace_back();
                put(triangle, 0, row, column);
                put(triangle, 1, row + 1, column + half);
                put(triangle, 2, row + 1 - half, column + 1);
            }
        }
    }
    return triangles;
}

TEST(StlImport, KeepsEveryTriangleOfALargeMeshInItsOrder)
{
    LeftoverGuard const guard;
    std::vector<Triangle> const triangles = torus(150, 100);
    KeldProgram keld;
    keld.file("in.stl", binaryStl(triangles));

    Ended const ended = keld.run({"convert", "-q", "in.stl", "binary.stl"});
    EXPECT_THAT(ended.out, HasSubstr("triangles                     30000\n"
                                     "    vertices                      15000\n"));
    EXPECT_TRUE(triangles == tests::trianglesOf(tests::contentOf(keld.files() / "binary.stl")));

    ASSERT_EQ(0, keld.run({"convert", "-q", "-o", "ascii=true", "in.stl", "ascii.stl"}).code);
    ASSERT_EQ(0, keld.run({"convert", "-q", "ascii.stl", "again.stl"}).code);
    EXPECT_LT(std::size_t{5} << 20, tests::contentOf(keld.files() / "ascii.stl").size());
    EXPECT_TRUE(tests::contentOf(keld.files() / "binary.stl") ==
                tests::contentOf(keld.files() / "again.stl"));
}

TEST(StlImport, BearsTrianglesThatHaveNoCornerInCommon)
{
    LeftoverGuard const guard;
    std::vector<Triangle> triangles;
    for (int i = 0; i < 20000; ++i) {
        auto const x = static_cast<float>(i);
        triangles.push_back({x, 0, 0, x, 1, 0, x, 0, 1});
    }
    EXPECT_THAT(importStl(binaryStl(triangles)).out,
                HasSubstr("triangles                     20000\n"
                          "    vertices                      60000\n"));
}

// ASCII files.

TEST(StlImport, TakesKeywordsInAnyCase)
{
    LeftoverGuard const guard;
    EXPECT_EQ(Plain, asciiOf(upperCase(Plain)));
    EXPECT_EQ(Plain, asciiOf(replaced(replaced(Plain, "solid", "SoLiD"), "vertex", "Vertex")));
}

TEST(StlImport, TakesLineEndsAndBlanksOfAnyKind)
{
    LeftoverGuard const guard;
    EXPECT_EQ(Plain, asciiOf(replaced(Plain, "\n", "\r\n")));
    EXPECT_EQ(Plain, asciiOf(replaced(Plain, "\n", "\r")));
    EXPECT_EQ(Plain, asciiOf(replaced(Plain, "\n", "\n\n")));
    EXPECT_EQ(Plain, asciiOf(replaced(Plain, "  ", "\t")));
    EXPECT_EQ(Plain, asciiOf(replaced(Plain, "  ", "")));
    EXPECT_EQ(Plain, asciiOf("\n \t" + Plain));
    EXPECT_EQ(Plain, asciiOf(Plain.substr(0, Plain.size() - 3)));
    EXPECT_EQ(Plain, asciiOf("solid N\n" + replaced(Plain.substr(8), "\n", " ")));
}

TEST(StlImport, PassesOverAByteOrderMark)
{
    LeftoverGuard const guard;
    EXPECT_EQ(Plain, asciiOf("\xef\xbb\xbf" + Plain));
}

TEST(StlImport, TakesNumbersInAnyForm)
{
    LeftoverGuard const guard;
    EXPECT_EQ(solid("N", facet("0 0 1", {"0 0 0", "10 0 0", "0 0.5 0"})),
              asciiOf(solid("N", facet("+0e0 0 1.0", {"+0.000000E+00 -0 .0", "1.0E+01 0. 0e5",
                                                      "1e-60 +5e-1 -4.9E-324"}))));
}

TEST(StlImport, PassesOverNormalsOfAnyKind)
{
    LeftoverGuard const guard;
    for (char const * normal : {"nan nan nan", "-nan(ind) 1.#QNAN 0", "7 7 7", "0 0 0", "1", ""})
        EXPECT_EQ(Plain, asciiOf(replaced(Plain, "normal 0 0 1", std::string("normal ") + normal)))
            << normal;
}

TEST(StlImport, DoesNotMindTheNameAtASolidsEnd)
{
    LeftoverGuard const guard;
    EXPECT_EQ(Plain, asciiOf(replaced(Plain, "endsolid N", "endsolid")));
    EXPECT_EQ(Plain, asciiOf(replaced(Plain, "endsolid N", "endsolid of another name")));
}

TEST(StlImport, NamesABodyByItsSolid)
{
    LeftoverGuard const guard;
    EXPECT_EQ(solid("facet 7, \xe4 part", firstFacet()),
              asciiOf("solid  \t facet 7, \xe4 part \r\n" + firstFacet() + "endsolid\n"));
}

TEST(StlImport, NamesABodyByTheFileWhereTheSolidHasNoName)
{
    LeftoverGuard const guard;
    EXPECT_EQ(solid("part", firstFacet()), asciiOf(solid("", firstFacet())));
}

TEST(StlImport, TakesANameThatIsLongerThanItsBuffer)
{
    LeftoverGuard const guard;
    std::string const content = solid(std::string(3 << 20, 'n'), firstFacet());
    EXPECT_TRUE(content == asciiOf(content));
}

TEST(StlImport, MakesABodyOfEachSolid)
{
    LeftoverGuard const guard;
    std::string const content =
        solid("one", firstFacet()) + solid("two", secondFacet()) + solid("one", secondFacet());
    EXPECT_EQ(content, asciiOf(content));
    Ended const ended = importStl(content);
    EXPECT_THAT(ended.out, HasSubstr("  bodies              3\n  facets              3\n"));
}

TEST(StlImport, NamesSolidsWithoutTrianglesAndReadsTheRest)
{
    LeftoverGuard const guard;
    Ended const ended = importStl(solid("one", "") + solid("two", firstFacet()) + solid("", ""));
    EXPECT_EQ(0, ended.code);
    EXPECT_THAT(ended.out, HasSubstr("  bodies              1\n"));
    EXPECT_EQ("    Warning : part.stl, line 1: the solid \"one\" holds no triangle.\n"
              "    Warning : part.stl, line 12: the solid \"\" holds no triangle.\n",
              ended.err);
}

TEST(StlImport, CountsSolidsWithoutTrianglesBeyondTheLimitOfItsOption)
{
    LeftoverGuard const guard;
    std::string const content =
        solid("a", "") + solid("b", "") + solid("c", "") + solid("d", firstFacet());
    EXPECT_EQ("    Warning : part.stl, line 1: the solid \"a\" holds no triangle.\n"
              "    Warning : 2 more solids of part.stl hold no triangle.\n",
              importStl(content, {"-o", "warning_limit=1"}).err);
}

TEST(StlImport, PassesOverWhatStandsBehindTheLastSolid)
{
    LeftoverGuard const guard;
    Ended const ended = importStl(solid("N", firstFacet()) + "\n% made by\n% hand\n\x1a");
    EXPECT_EQ(0, ended.code);
    EXPECT_THAT(ended.out, HasSubstr("triangles                     1\n"));
    EXPECT_EQ(
        "    Warning : part.stl, line 11: what stands behind the last solid is passed over.\n",
        ended.err);
}

TEST(StlImport, FindsASolidBehindWhatItPassesOver)
{
    LeftoverGuard const guard;
    Ended const ended =
        importStl(solid("one", firstFacet()) + "---\n" + solid("two", firstFacet()));
    EXPECT_THAT(ended.out, HasSubstr("  bodies              2\n"));
}

TEST(StlImport, ReadsNumbersTheSameUnderAForeignLocale)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.set("LC_ALL", "de_DE.UTF-8");
    std::string const content = solid("N", facet("0 0 1", {"0.5 0 0", "1.5 0 0", "0 2.5 0"}));
    keld.file("in.stl", content);

    ASSERT_EQ(0, keld.run({"convert", "-q", "-o", "ascii=true", "in.stl", "out.stl"}).code);
    EXPECT_EQ(content, tests::contentOf(keld.files() / "out.stl"));
}

} // namespace
