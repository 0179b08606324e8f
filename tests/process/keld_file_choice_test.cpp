#include "process/keld_program.h"
#include "process/other_programs.h"

#include <fcntl.h>
#include <filesystem>
#include <gmock/gmock.h>
#include <ostream>
#include <sys/stat.h>
#include <unistd.h>

namespace {

using testing::HasSubstr;
using testing::Not;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;

/// The smallest beginning of each kind of file.
std::string const Iges = std::string(72, ' ') + "S      1\n";
std::string const BinaryStl(84, '\0');
std::string const AsciiStl = "solid\nfacet normal 0 0 1\n";
std::string const Jt = "Version 9.5 JT" + std::string(66, ' ') + std::string(1, '\0');
std::string const U3d("U3D\0", 4);

/// A file and the translator that it is to go to.
struct Choice
{
    char const * test;
    std::string file;
    std::string content;
    std::string translator;
    std::string remark; ///< empty for none
};

void PrintTo(Choice const & choice, std::ostream * stream)
{
    *stream << choice.file;
}

std::string nameOf(testing::TestParamInfo<Choice> const & info)
{
    return info.param.test;
}

class KeldFileChoice : public testing::TestWithParam<Choice>
{
protected:
    LeftoverGuard const m_Guard;
    KeldProgram m_Keld;
};

/// In an installation that is empty the program says which translator it would have taken.
TEST_P(KeldFileChoice, TakesTheTranslatorForTheContent)
{
    Choice const & choice = GetParam();
    std::filesystem::create_directories(m_Keld.bin());
    m_Keld.set("VORN_EXEC_DIR", m_Keld.files() / "installation");
    m_Keld.file(choice.file, choice.content);

    Ended const ended = m_Keld.run({"import", "-q", choice.file});

    EXPECT_EQ(3, ended.code);
    EXPECT_EQ("", ended.out);
    std::string const start = "keld: " + choice.file + ": ";
    std::string const remark = choice.remark.empty() ? "" : start + choice.remark + "\n";
    EXPECT_EQ(0U, ended.err.find(remark + start + "the translator \"" + choice.translator +
                                 "\" is not installed"))
        << ended.err;
}

INSTANTIATE_TEST_SUITE_P(
    MisleadingName, KeldFileChoice,
    testing::Values(
        Choice{"Step", "part.xyz", "ISO-10303-21;\n", "step",
               "its name says xyz, its content is STEP; taking the translator \"step\"."},
        Choice{"Iges", "part.stl", Iges, "step",
               "its name says stl, its content is IGES; taking the translator \"step\"."},
        Choice{"Brep", "part.jt", "CASCADE Topology V1\n", "step",
               "its name says jt, its content is BREP; taking the translator \"step\"."},
        Choice{"AsciiStl", "part.step", AsciiStl, "stl",
               "its name says step, its content is STL; taking the translator \"stl\"."},
        Choice{"BinaryStl", "part.PDF", BinaryStl, "stl",
               "its name says pdf, its content is STL; taking the translator \"stl\"."},
        Choice{"Jt", "part.stp", Jt, "jt",
               "its name says stp, its content is JT; taking the translator \"jt\"."},
        Choice{"Rhino", "part.igs", "3D Geometry File Format ", "rhino",
               "its name says igs, its content is Rhino 3DM; taking the translator \"rhino\"."},
        Choice{"U3d", "part.3dm", U3d, "u3dpdf",
               "its name says 3dm, its content is U3D; taking the translator \"u3dpdf\"."},
        Choice{"Pdf", "part.brep", "%PDF-1.7\n", "u3dpdf",
               "its name says brep, its content is PDF; taking the translator \"u3dpdf\"."}),
    nameOf);

INSTANTIATE_TEST_SUITE_P(NoSuffix, KeldFileChoice,
                         testing::Values(Choice{"Step", "part", "ISO-10303-21;\n", "step", ""},
                                         Choice{"Stl", "part", BinaryStl, "stl", ""},
                                         Choice{"Pdf", ".pdf", "%PDF-1.7\n", "u3dpdf", ""}),
                         nameOf);

INSTANTIATE_TEST_SUITE_P(FittingName, KeldFileChoice,
                         testing::Values(Choice{"Step", "part.STEP", "ISO-10303-21;\n", "step", ""},
                                         Choice{"StepNamedLikeIges", "part.igs", "ISO-10303-21;\n",
                                                "step", ""},
                                         Choice{"Stl", "part.stl", AsciiStl, "stl", ""},
                                         Choice{"Jt", "part.jt", Jt, "jt", ""},
                                         Choice{"Pdf", "part.pdf", "%PDF-1.7\n", "u3dpdf", ""}),
                         nameOf);

INSTANTIATE_TEST_SUITE_P(
    UnknownContent, KeldFileChoice,
    testing::Values(
        Choice{"Step", "part.step", "?", "step", ""}, Choice{"Stp", "part.stp", "?", "step", ""},
        Choice{"P21", "part.p21", "?", "step", ""}, Choice{"Iges", "part.iges", "?", "step", ""},
        Choice{"Igs", "part.igs", "?", "step", ""}, Choice{"Brep", "part.brep", "?", "step", ""},
        Choice{"Jt", "part.jt", "?", "jt", ""}, Choice{"Rhino", "part.3dm", "?", "rhino", ""},
        Choice{"U3d", "part.u3d", "?", "u3dpdf", ""}, Choice{"Pdf", "part.pdf", "?", "u3dpdf", ""},
        Choice{"Stl", "part.stl", "?", "stl", ""}, Choice{"Xyz", "part.xyz", "1 2 3\n", "xyz", ""},
        Choice{"Empty", "part.STP", "", "step", ""}),
    nameOf);

constexpr char ThreePoints[] = "options;read;frame 123;read;model 3;frame 120 i64 size;read;"
                               "frame 126;read;frame 126";

class KeldFileChoiceTest : public testing::Test
{
protected:
    KeldFileChoiceTest() { m_Keld.installScripted("step", ThreePoints); }

    LeftoverGuard const m_Guard;
    KeldProgram m_Keld;
};

TEST_F(KeldFileChoiceTest, AFileGoesThroughTheTranslatorForItsContentAndIsRemarkedOnOnce)
{
    m_Keld.file("part.xyz", "ISO-10303-21;\n");
    Ended const ended = m_Keld.run({"import", "-q", "part.xyz"});
    EXPECT_EQ(0, ended.code);
    EXPECT_THAT(ended.out, HasSubstr("points              3"));
    EXPECT_EQ("keld: part.xyz: its name says xyz, its content is STEP; taking the translator "
              "\"step\".\n",
              ended.err);
}

TEST_F(KeldFileChoiceTest, AFileWithoutSuffixGoesThroughTheTranslatorForItsContent)
{
    m_Keld.file("part", "ISO-10303-21;\n");
    Ended const ended = m_Keld.run({"import", "-q", "part"});
    EXPECT_EQ(0, ended.code);
    EXPECT_EQ("", ended.err);
}

TEST_F(KeldFileChoiceTest, ATranslatorThatIsNamedIsTakenWithoutARemark)
{
    m_Keld.file("part.xyz", "%PDF-1.7\n");
    Ended const ended = m_Keld.run({"import", "-q", "--translator", "step", "part.xyz"});
    EXPECT_EQ(0, ended.code);
    EXPECT_EQ("", ended.err);
}

TEST_F(KeldFileChoiceTest, AConversionTellsItsSourceByContentAndItsTargetByName)
{
    m_Keld.file("part.jt", "ISO-10303-21;\n");
    m_Keld.file("out.pts", "%PDF-1.7\n");
    Ended const ended = m_Keld.run({"convert", "-q", "part.jt", "out.pts"});
    EXPECT_EQ(3, ended.code);
    EXPECT_THAT(ended.err, HasSubstr("keld: part.jt: its name says jt, its content is STEP; "));
    EXPECT_THAT(ended.err, HasSubstr("keld: out.pts: the translator \"pts\" is not installed: "));
    EXPECT_THAT(ended.err, Not(HasSubstr("PDF")));
}

TEST(KeldFileChoiceInCatalogue, TheCatalogueNamesTheTranslatorThatWasTaken)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("step", KELD_TEST_KIT_TRANSLATOR);
    keld.file("product.jt", "ISO-10303-21;\n");
    Ended const ended =
        keld.run({"info", "-q", "--metadata", "--database", "parts.db", "product.jt"});
    EXPECT_EQ(0, ended.code);
    EXPECT_EQ("keld: product.jt: its name says jt, its content is STEP; taking the translator "
              "\"step\".\n",
              ended.err);
    EXPECT_EQ("step", tests::pythonSays(
                          keld.file("list.json", keld.run({"catalogue", "--json", "parts.db"}).out),
                          "d['files'][0]['translator']"));
}

TEST_F(KeldFileChoiceTest, APipeGoesByItsNameAndKeepsItsBytes)
{
    std::string const path = m_Keld.files() / "pipe.step";
    ASSERT_EQ(0, mkfifo(path.c_str(), 0600));
    int const pipe = open(path.c_str(), O_RDWR | O_NONBLOCK | O_CLOEXEC);
    ASSERT_EQ(9, write(pipe, "%PDF-1.7\n", 9));

    EXPECT_EQ(0, m_Keld.run({"import", "-q", "pipe.step"}).code);

    char bytes[16];
    EXPECT_EQ(9, read(pipe, bytes, sizeof(bytes)));
    close(pipe);
}

TEST_F(KeldFileChoiceTest, WhatCannotBeReadGoesByItsName)
{
    std::filesystem::create_directory(m_Keld.files() / "folder.step");
    EXPECT_EQ(0, m_Keld.run({"import", "-q", "folder.step"}).code);
    EXPECT_EQ(0, m_Keld.run({"import", "-q", "missing.step"}).code);

    std::filesystem::permissions(m_Keld.file("closed.step", "%PDF-1.7\n"),
                                 std::filesystem::perms(0));
    m_Keld.before(tests::obeyPermissions);
    EXPECT_EQ(0, m_Keld.run({"import", "-q", "closed.step"}).code);
}

} // namespace
