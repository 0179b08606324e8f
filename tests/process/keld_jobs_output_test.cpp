#include "process/keld_jobs_program.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::MatchesRegex;
using testing::Not;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;
using tests::withoutTimes;

constexpr char const * ThreeQuarters =
    "options;read;frame 123;read;frame 121 i32 75;model 1;frame 120 i64 size;read;frame 126;read;"
    "frame 126";

TEST(KeldJobsOutput, HasALineForEachStepOfAFile)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", ThreeQuarters);
    Ended const ended = keld.run({"import", "-j", "1", "a.scripted", "b.scripted"});
    // Steps that come at once may be one.
    std::string const err = withoutTimes(ended.err);
    EXPECT_THAT(err, testing::EndsWith("b.scripted 100 %\nb.scripted completed T\n"));
    EXPECT_THAT(err, HasSubstr("a.scripted 100 %\na.scripted completed T\nb.scripted "));
}

TEST(KeldJobsOutput, HasNoProgressWhenQuiet)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", ThreeQuarters);
    EXPECT_EQ("", keld.run({"import", "--quiet", "a.scripted", "b.scripted"}).err);
}

TEST(KeldJobsOutput, KeepsTheWordsOfAFileTogether)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    // Each translator says one word, lets the other one speak, and says another one.
    tests::wrapTranslator(keld, "kit",
                          "echo first >&2; echo start >> log\n"
                          "while [ $(grep -c start log) -lt 2 ]; do sleep 0.01; done\n"
                          "echo last >&2\nexec \"$TRANSLATOR\" \"$@\"");

    Ended const ended = keld.run({"import", "-q", "-j", "2", "a.kit", "b.kit"});

    EXPECT_EQ(0, ended.code);
    std::string const a = "--- a.kit ---\nfirst\nlast\n";
    std::string const b = "--- b.kit ---\nfirst\nlast\n";
    EXPECT_THAT(ended.err, testing::AnyOf(a + b, b + a));
}

TEST(KeldJobsOutput, MayBeAMegabyte)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    tests::wrapTranslator(keld, "kit",
                          "head -c 1000000 /dev/zero | tr '\\0' x >&2\n"
                          "head -c 1000000 /dev/zero | tr '\\0' y\n"
                          "exec \"$TRANSLATOR\" \"$@\"");

    Ended const ended = keld.run({"import", "-q", "-j", "2", "a.kit", "b.kit"});

    EXPECT_EQ(0, ended.code);
    EXPECT_EQ(2000000, std::count(ended.err.begin(), ended.err.end(), 'x'));
    EXPECT_EQ(2000000, std::count(ended.out.begin(), ended.out.end(), 'y'));
}

TEST(KeldJobsOutput, HasProductTreesWhenAskedForThem)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    EXPECT_THAT(keld.run({"import", "-q", "product.kit", "a.kit"}).out, Not(HasSubstr("(part")));
    EXPECT_THAT(keld.run({"import", "-q", "--tree", "3", "product.kit", "a.kit"}).out,
                AllOf(HasSubstr("--- product.kit ---\n"), HasSubstr("(part")));
}

TEST(KeldJobsOutput, HasAFolderOfReportsForEachFile)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    for (char const * folder : {"1", "2"}) {
        std::filesystem::create_directory(keld.files() / folder);
        keld.file(std::string(folder) + "/a.xyz", "1 2 3\n");
    }

    Ended const ended =
        keld.run({"import", "-q", "--report", "r", "1/a.xyz", "2/a.xyz", "2/a.xyz", "missing.xyz"});

    EXPECT_EQ(10, ended.code);
    std::string const root = std::filesystem::canonical(keld.files() / "r").string() + "/";
    std::vector<std::pair<std::string, std::string>> const reports = {
        {"a.xyz", "1/a.xyz"},
        {"a.xyz-2", "2/a.xyz"},
        {"a.xyz-3", "2/a.xyz"},
        {"missing.xyz", "missing.xyz"}};
    std::size_t position = 0;
    for (auto const & [folder, file] : reports) {
        std::string const page = root + folder + "/report.html";
        EXPECT_THAT(tests::contentOf(page), HasSubstr(file));
        position = ended.out.find("  report: " + page + "\n", position);
        EXPECT_NE(std::string::npos, position) << ended.out;
    }
}

TEST(KeldJobsOutput, ShowsNamesAsTheyAreWithoutWhatDrivesATerminal)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    std::string const umlaut = "\u00e4.xyz";
    std::string const control = "\x1b[2J.xyz";
    keld.file(umlaut, "1 2 3\n");
    keld.file(control, "1 2 3\n");

    Ended const ended = keld.run({"import", umlaut, control});

    EXPECT_EQ(0, ended.code);
    EXPECT_EQ("file         result T  points  lost\n"
              "\u00e4.xyz        completed T       1     0\n"
              "\\x1b[2J.xyz  completed T       1     0\n"
              "total T       2     0\n"
              "2 of 2 files completed.\n",
              withoutTimes(ended.out));
    EXPECT_THAT(ended.err, AllOf(HasSubstr("\\x1b[2J.xyz 100 %\n"), Not(HasSubstr("\x1b"))));
}

TEST(KeldJobsOnATerminal, DrawALineForEachFileThatRuns)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    tests::wrapTranslator(keld, "kit",
                          "echo >> log\n"
                          "while [ $(wc -l < log) -lt 2 ]; do sleep 0.01; done\n"
                          "exec \"$TRANSLATOR\" \"$@\"");
    std::string const written =
        tests::writtenToTerminal(keld, 80, {"import", "-j", "2", "a.kit", "long.kit", "c.kit"});
    std::string const bar(50, '.');
    EXPECT_THAT(written, MatchesRegex("a.kit    \\[" + bar +
                                      "\\]   0 %     [0-9] s\r\n"
                                      "long.kit \\[" +
                                      bar +
                                      "\\]   0 %     [0-9] s\r\n"
                                      "0 of 3 done\r\n\x1b\\[3A\r\x1b\\[J(.|\r|\n)*"));
}

TEST(KeldJobsOnATerminal, LeaveALineForEachFileThatIsDone)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    std::string const written =
        tests::writtenToTerminal(keld, 80, {"import", "-j", "1", "a.kit", "fail-3.kit", "b.kit"});
    EXPECT_EQ("a.kit completed T\n"
              "fail-3.kit failed T\n"
              "--- fail-3.kit ---\n"
              "    Warning : a warning\n"
              "    Error : as the name says\n"
              "keld: fail-3.kit: Failed! Model is empty (exit status 3)\n"
              "b.kit completed T\n"
              "\n",
              withoutTimes(tests::screenAfter(written, 80)));
}

TEST(KeldJobsOnATerminal, FitIntoANarrowOne)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    std::string const written = tests::writtenToTerminal(
        keld, 40, {"import", "-j", "1", "a-name-that-is-too-long-for-forty-columns.kit", "b.kit"});
    EXPECT_THAT(written, MatchesRegex("a-name-that\\.\\.\\.columns\\.kit   0 %     [0-9] s\r\n"
                                      "0 of 2 done\r\n(.|\r|\n)*"));
    EXPECT_EQ("a-name-tha...olumns.kit completed T\nb.kit completed T\n\n",
              withoutTimes(tests::screenAfter(written, 40)));
}

TEST(KeldJobsOnATerminal, ShowNothingWhenQuiet)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    EXPECT_EQ("", tests::writtenToTerminal(keld, 80, {"import", "-q", "a.kit", "b.kit"}));
}

} // namespace
