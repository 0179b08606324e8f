#include "process/keld_program.h"

#include <filesystem>
#include <gmock/gmock.h>
#include <sys/stat.h>

namespace {

using testing::HasSubstr;
using tests::contentOf;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;

TEST(KeldExport, WritesGivenAndGeneratedPoints)
{
    LeftoverGuard const guard;
    KeldProgram keld;

    Ended const ended = keld.run({"export", "-q", "out.xyz", "--point", "1", "2", "3", "--point",
                                  "-0.1", "1e-9", "1e99", "--points", "2"});

    EXPECT_EQ(0, ended.code) << ended.err;
    EXPECT_EQ("out.xyz: Completed! (exit status 8)\n", ended.out);
    EXPECT_EQ("1 2 3\n-0.1 1e-09 1e+99\n0 0 0\n0.5 0 0\n", contentOf(keld.files() / "out.xyz"));
}

TEST(KeldExport, ReplacesAFileAndKeepsItsPermissions)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    std::string const path = keld.file("out.xyz", "old");
    std::filesystem::permissions(path, std::filesystem::perms(0640));

    EXPECT_EQ(0, keld.run({"export", "-q", "out.xyz", "--point", "1", "2", "3"}).code);

    EXPECT_EQ("1 2 3\n", contentOf(path));
    EXPECT_EQ(std::filesystem::perms(0640), std::filesystem::status(path).permissions());
}

TEST(KeldExport, WritesThroughASymbolicLink)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    std::string const path = keld.file("real.xyz", "old");
    std::filesystem::create_symlink("real.xyz", keld.files() / "link.xyz");

    EXPECT_EQ(0, keld.run({"export", "-q", "link.xyz", "--point", "1", "2", "3"}).code);

    EXPECT_TRUE(std::filesystem::is_symlink(keld.files() / "link.xyz"));
    EXPECT_EQ("1 2 3\n", contentOf(path));
}

TEST(KeldExport, LeavesOutPointsThatAreNotFiniteAndSaysSo)
{
    LeftoverGuard const guard;
    KeldProgram keld;

    Ended const ended = keld.run({"export", "-q", "out.xyz", "--point", "nan", "0", "0", "--point",
                                  "1", "2", "3", "--point", "0", "inf", "0"});

    EXPECT_EQ(0, ended.code);
    EXPECT_EQ("1 2 3\n", contentOf(keld.files() / "out.xyz"));
    EXPECT_EQ("keld_xyz: Warning : Point 1 is left out: its position is not finite.\n"
              "keld_xyz: Warning : Point 3 is left out: its position is not finite.\n",
              ended.err);
}

TEST(KeldExport, OfAnEmptyModelFailsAndWritesNothing)
{
    LeftoverGuard const guard;
    KeldProgram keld;

    Ended const ended = keld.run({"export", "-q", "out.xyz"});

    EXPECT_EQ(1, ended.code);
    EXPECT_EQ("keld_xyz: Error : The model holds no points; out.xyz is not written.\n"
              "keld: out.xyz: Failed! Model is empty (exit status 3)\n",
              ended.err);
    EXPECT_TRUE(keld.files().names().empty());
}

TEST(KeldConvert, KeepsEveryFiniteValueBitForBit)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    std::string const points = "0 -0 1\n"
                               "5e-324 -5e-324 2.225073858507201e-308\n"
                               "2.2250738585072014e-308 1.7976931348623157e+308 "
                               "-1.7976931348623157e+308\n"
                               "0.1 0.30000000000000004 3.3333333333333335\n"
                               "123456789012345.67 1e+22 9007199254740993\n";
    keld.file("in.xyz", points);

    ASSERT_EQ(0, keld.run({"convert", "-q", "in.xyz", "out.xyz"}).code);

    // What the shortest form of 9007199254740993 reads back as; all others stand as they were.
    std::string expected = points;
    expected.replace(expected.find("9007199254740993"), 16, "9007199254740992");
    EXPECT_EQ(expected, contentOf(keld.files() / "out.xyz"));
}

TEST(KeldConvert, SpeaksToTheTranslatorsOfBothFiles)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "options;read;expect s out.scripted;frame 123;read;"
                                     "expect-start e 164, ;frame 120 i32 8;read;expect x ;"
                                     "frame 126;read;expect q;frame 126");
    keld.install("xyz", KELD_TEST_XYZ_TRANSLATOR);
    keld.file("in.xyz", "1 2 3\n4 5 6\n");

    EXPECT_EQ(0, keld.run({"convert", "-q", "in.xyz", "out.scripted"}).code);
}

TEST(KeldConvert, DoesNotHandTheLogOfTheImportToTheExport)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "options;read;frame 123;read;expect-start e 136, ;"
                                     "frame 120 i32 8;read;frame 126;read;frame 126");
    keld.install("xyz", KELD_TEST_XYZ_TRANSLATOR);
    keld.file("in.xyz", "1 2 3\nnonsense\n");

    Ended const ended = keld.run({"convert", "-q", "in.xyz", "out.scripted"});

    EXPECT_EQ(0, ended.code);
    EXPECT_THAT(ended.err, HasSubstr("nonsense"));
}

TEST(KeldConvert, ExportsNothingWhenTheImportFails)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("in.xyz", "# nothing\n");

    Ended const ended = keld.run({"convert", "-q", "in.xyz", "out.xyz"});

    EXPECT_EQ(1, ended.code);
    EXPECT_EQ(std::set<std::string>{"in.xyz"}, keld.files().names());
}

TEST(KeldConvert, RefusesToReplaceItsOwnSource)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("in.xyz", "1 2 3\n");

    Ended const ended = keld.run({"convert", "-q", "in.xyz", "./in.xyz"});

    EXPECT_EQ(2, ended.code);
    EXPECT_THAT(ended.err, HasSubstr("source and target are the same file"));
    EXPECT_EQ("1 2 3\n", contentOf(keld.files() / "in.xyz"));
}

} // namespace
