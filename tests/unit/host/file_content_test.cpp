#include "file_content.h"
#include "support/leftovers.h"
#include "support/samples.h"

#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <ostream>
#include <sys/inotify.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using keld::contentOf;
using keld::FileContent;
using tests::TemporaryDirectory;

/// What a file with these bytes is. Its name says nothing.
FileContent contentOfBytes(std::string const & bytes)
{
    TemporaryDirectory const directory;
    std::ofstream(directory / "file", std::ios::binary) << bytes;
    return contentOf(directory / "file");
}

std::string igesLine(char section, std::string const & number)
{
    return std::string(72, ' ') + section + number;
}

std::string binaryStl(char count, std::size_t triangles, std::string header = {})
{
    header.resize(80);
    return header + std::string{count, 0, 0, 0} + std::string(50 * triangles, '\0');
}

std::string jtHeader(std::string version, char byteOrder)
{
    version.resize(75, ' ');
    return version + " \n\r\n " + std::string(1, byteOrder);
}

struct Sample
{
    char const * name;
    std::string bytes;
    FileContent content;
};

void PrintTo(Sample const & sample, std::ostream * stream)
{
    *stream << sample.name;
}

std::string nameOfSample(testing::TestParamInfo<Sample> const & info)
{
    return info.param.name;
}

class FileContentOf : public testing::TestWithParam<Sample>
{};

TEST_P(FileContentOf, IsToldByTheBeginning)
{
    EXPECT_EQ(GetParam().content, contentOfBytes(GetParam().bytes));
}

using enum FileContent;

INSTANTIATE_TEST_SUITE_P(
    Step, FileContentOf,
    testing::Values(Sample{"Keyword", "ISO-10303-21;", Step},
                    Sample{"BehindBlanks", "\r\n \tISO-10303-21;\nHEADER;", Step},
                    Sample{"BehindComments", "/* a; ** */\n/**/ISO-10303-21;\n", Step},
                    Sample{"BehindAMark", "\xef\xbb\xbfISO-10303-21;\n", Step},
                    Sample{"BeforeABlank", "ISO-10303-21 ;\n", Step},
                    Sample{"NotWithoutSemicolon", "ISO-10303-21\n", Unknown},
                    Sample{"NotOfAnotherPart", "ISO-10303-28;\n", Unknown},
                    Sample{"NotInsideAComment", "/* ISO-10303-21;", Unknown},
                    Sample{"NotInTheMiddle", "# of ISO-10303-21;\n1 2 3\n", Unknown},
                    Sample{"NotBehindTheHead", std::string(4096, ' ') + "ISO-10303-21;", Unknown}),
    nameOfSample);

INSTANTIATE_TEST_SUITE_P(
    Iges, FileContentOf,
    testing::Values(Sample{"FirstLine", igesLine('S', "      1") + "\n", Iges},
                    Sample{"WithZeros", igesLine('S', "0000001") + "\r\n", Iges},
                    Sample{"WithoutLineEnds", igesLine('S', "      1") + igesLine('G', "      1"),
                           Iges},
                    Sample{"Compressed", igesLine('C', "      1") + "\n", Iges},
                    Sample{"NotFromTheSecondLine", igesLine('S', "      2") + "\n", Unknown},
                    Sample{"NotFromAnotherSection", igesLine('G', "      1") + "\n", Unknown},
                    Sample{"NotOfAShortLine", igesLine('S', "     1") + "\n", Unknown},
                    Sample{"NotOfAnotherNumber", igesLine('S', "     11") + "\n", Unknown}),
    nameOfSample);

INSTANTIATE_TEST_SUITE_P(
    Brep, FileContentOf,
    testing::Values(Sample{"Text", "CASCADE Topology V1, (c) Matra-Datavision\n", Brep},
                    Sample{"TextBehindBlankLine", "\nCASCADE Topology V3, (c) Open Cascade\n",
                           Brep},
                    Sample{"Drawable", "DBRep_DrawableShape\n\nCASCADE Topology V1\n", Brep},
                    Sample{"Binary", "\nOpen CASCADE Topology V4 (c)\n", Brep},
                    Sample{"NotInTheMiddle", "1 2 3\nCASCADE Topology V1\n", Unknown}),
    nameOfSample);

INSTANTIATE_TEST_SUITE_P(
    Stl, FileContentOf,
    testing::Values(Sample{"Ascii", "solid part\n  facet normal 0 0 1\n", Stl},
                    Sample{"AsciiWithoutName", "solid\nfacet normal 0 0 1\n", Stl},
                    Sample{"AsciiInCapitals", " SOLID P\r\n\tFACET NORMAL 0 0 1\r\n", Stl},
                    Sample{"AsciiWithoutFacets", "solid part\nendsolid part\n", Stl},
                    Sample{"Binary", binaryStl(2, 2), Stl},
                    Sample{"BinaryWithoutTriangles", binaryStl(0, 0), Stl},
                    Sample{"BinaryThatBeginsLikeText", binaryStl(1, 1, "solid part"), Stl},
                    Sample{"BinaryThatBeginsLikeStep", binaryStl(1, 1, "ISO-10303-21;"), Stl},
                    Sample{"NotAnyTextAboutSolids", "solid ground\nunder the feet\n", Unknown},
                    Sample{"NotALongerWord", "solids\nfacet\n", Unknown},
                    Sample{"NotTheWordAlone", "solid", Unknown},
                    Sample{"NotCutShort", binaryStl(2, 1), Unknown},
                    Sample{"NotTooLong", binaryStl(1, 2), Unknown},
                    Sample{"NotOfTheHeaderAlone", std::string(80, '\0'), Unknown}),
    nameOfSample);

INSTANTIATE_TEST_SUITE_P(
    Others, FileContentOf,
    testing::Values(Sample{"Jt", jtHeader("Version 9.5 JT  DM 7.3", '\0'), Jt},
                    Sample{"JtOfTheOtherByteOrder", jtHeader("Version 10.2 JT", '\1'), Jt},
                    Sample{"NoJtIsText", jtHeader("Version 9.5 of the plan", 'x'), Unknown},
                    Sample{"NoJtIsWithoutNumber", jtHeader("Version A.5", '\0'), Unknown},
                    Sample{"NoJtHasAWholeNumber", jtHeader("Version 9 JT", '\0'), Unknown},
                    Sample{"NoJtIsShort", "Version 9.5 JT", Unknown},
                    Sample{"NoJtEndsWithItsHeader", jtHeader("Version 9.5 JT", '\0').substr(0, 80),
                           Unknown},
                    Sample{"Rhino", "3D Geometry File Format        7", Rhino},
                    Sample{"U3d", std::string("U3D\0\x18\0\0\0", 8), U3d},
                    Sample{"NoU3dIsText", "U3D is a format\n", Unknown},
                    Sample{"Pdf", "%PDF-1.7\n", Pdf}, Sample{"Points", "1 2 3\n", Unknown},
                    Sample{"Gearbox", "designer=R. Keller\n", Unknown},
                    Sample{"Empty", "", Unknown}),
    nameOfSample);

TEST(FileContent, IsUnknownOfWhatIsNotThereAndOfAFolder)
{
    TemporaryDirectory const directory;
    EXPECT_EQ(FileContent::Unknown, contentOf(directory / "missing"));
    EXPECT_EQ(FileContent::Unknown, contentOf(directory.path()));
    EXPECT_EQ(FileContent::Unknown, contentOf(""));
}

/// Whoever waits for a reader of the pipe would take the opening for that of its reader.
TEST(FileContent, OpensNoPipe)
{
    TemporaryDirectory const directory;
    std::string const path = directory / "pipe";
    ASSERT_EQ(0, mkfifo(path.c_str(), 0600));
    int const watch = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
    ASSERT_LE(0, inotify_add_watch(watch, path.c_str(), IN_OPEN));
    char event[4096];

    EXPECT_EQ(FileContent::Unknown, contentOf(path));
    EXPECT_EQ(-1, read(watch, event, sizeof(event)));

    close(open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    EXPECT_LT(0, read(watch, event, sizeof(event)));
    close(watch);
}

TEST(FileContent, IsThatOfTheFileBehindALink)
{
    TemporaryDirectory const directory;
    std::ofstream(directory / "file") << "%PDF-1.4\n";
    std::filesystem::create_symlink("file", directory / "link");
    EXPECT_EQ(FileContent::Pdf, contentOf(directory / "link"));
}

/// Files that other programs wrote. They do not belong to the project.
TEST(FileContent, OfSamplesIsWhatTheirNamesSay)
{
    tests::skipWithoutSamples();
    if (IsSkipped())
        return;
    std::map<std::string, FileContent> const contents = {{".step", Step}, {".stp", Step},
                                                         {".iges", Iges}, {".igs", Iges},
                                                         {".brep", Brep}, {".stl", Stl}};
    int seen = 0;
    for (auto const & entry : std::filesystem::directory_iterator(tests::sampleFolder())) {
        auto const expected = contents.find(entry.path().extension());
        EXPECT_EQ(expected == contents.end() ? Unknown : expected->second, contentOf(entry.path()))
            << entry.path();
        ++seen;
    }
    EXPECT_LT(0, seen);
}

TEST(FileContent, HasNames)
{
    using keld::nameOf;
    EXPECT_STREQ("STEP", nameOf(Step));
    EXPECT_STREQ("IGES", nameOf(Iges));
    EXPECT_STREQ("BREP", nameOf(Brep));
    EXPECT_STREQ("STL", nameOf(Stl));
    EXPECT_STREQ("JT", nameOf(Jt));
    EXPECT_STREQ("Rhino 3DM", nameOf(Rhino));
    EXPECT_STREQ("U3D", nameOf(U3d));
    EXPECT_STREQ("PDF", nameOf(Pdf));
    EXPECT_STREQ("unknown", nameOf(Unknown));
}

} // namespace
