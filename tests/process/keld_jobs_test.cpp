#include "process/keld_jobs_program.h"

#include <algorithm>
#include <filesystem>
#include <gmock/gmock.h>
#include <sstream>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using tests::contentOf;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;
using tests::withoutTimes;

/// How many translators there were at once, at most, and how many in all, after a log with a line
/// "start" or "end" for each.
std::pair<int, int> mostAtOnce(std::string const & log)
{
    std::istringstream words(log);
    int now = 0;
    int most = 0;
    int all = 0;
    for (std::string word; words >> word;) {
        now += word == "start" ? 1 : -1;
        all += word == "start";
        most = std::max(most, now);
    }
    return {most, all};
}

TEST(KeldJobs, RunsAsManyTranslatorsAtOnceAsAskedFor)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    // The first one goes on only after the second has begun: one after the other they would hang.
    tests::wrapTranslator(keld, "kit",
                          "echo start >> log\n"
                          "while [ $(grep -c start log) -lt 2 ]; do sleep 0.01; done\n"
                          "\"$TRANSLATOR\" \"$@\"\ncode=$?\necho end >> log\nexit $code");

    Ended const ended =
        keld.run({"import", "-q", "--jobs", "2", "1.kit", "2.kit", "3.kit", "4.kit", "5.kit"});

    EXPECT_EQ(0, ended.code) << ended.err;
    EXPECT_EQ(std::make_pair(2, 5), mostAtOnce(contentOf(keld.files() / "log")));
}

TEST(KeldJobs, PrintATableInTheOrderOfTheCommandLine)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    // The first file is done last.
    tests::wrapTranslator(keld, "kit", "\"$TRANSLATOR\" \"$@\"\ncode=$?\necho >> log\nexit $code");
    keld.installScripted("scripted", "options;read;frame 123;read;wait-for log;model 7;"
                                     "frame 120 i64 size;read;frame 126;read;frame 126");

    Ended const ended =
        keld.run({"import", "-q", "-j", "2", "slow.scripted", "fail-3.kit", "b.kit", "facets.kit"});

    EXPECT_EQ(10, ended.code);
    EXPECT_EQ("file           result T  points  bodies  triangles  lost\n"
              "slow.scripted  completed T       7       0          0     0\n"
              "fail-3.kit     failed T       3       0          0     0\n"
              "  Failed! Model is empty (exit status 3): as the name says\n"
              "b.kit          completed T       3       0          0     0\n"
              "facets.kit     completed T       0       3          6     0\n"
              "total T      13       3          6     0\n"
              "3 of 4 files completed, 1 failed.\n",
              withoutTimes(ended.out));
}

TEST(KeldJobs, AnswerWithZeroWhenAllFilesCompleted)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("a.xyz", "1 2 3\n");
    keld.file("b.xyz", "1 2 3\n4 5 6\n");

    Ended const ended = keld.run({"import", "-q", "a.xyz", "b.xyz"});

    EXPECT_EQ(0, ended.code);
    EXPECT_EQ("file   result T  points  lost\n"
              "a.xyz  completed T       1     0\n"
              "b.xyz  completed T       2     0\n"
              "total T       3     0\n"
              "2 of 2 files completed.\n",
              withoutTimes(ended.out));
    EXPECT_EQ("", ended.err);
}

TEST(KeldJobs, TakeTheSameFileTwice)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("a.xyz", "1 2 3\n");
    Ended const ended = keld.run({"import", "-q", "-j", "2", "a.xyz", "a.xyz"});
    EXPECT_EQ(0, ended.code);
    EXPECT_THAT(ended.out, HasSubstr("2 of 2 files completed.\n"));
}

TEST(KeldJobs, AreOfNoConcernToOneFile)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("a.xyz", "1 2 3\n");
    EXPECT_EQ("a.xyz: Completed! (exit status 8)\n"
              "  points              1\n"
              "  from                1 2 3\n"
              "  to                  1 2 3\n"
              "1: 1 2 3\n",
              keld.run({"import", "-q", "--jobs", "4", "--list-points", "a.xyz"}).out);
}

TEST(KeldJobs, GiveEveryTranslatorTheSameOptions)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("any", "options;expect-option n=5;read;frame 123;read;frame 120 i64 0;"
                                "read;frame 126;read;frame 126");
    EXPECT_EQ(0, keld.run({"import", "-q", "--translator", "any", "-o", "n=5", "a", "b"}).code);
}

TEST(KeldJobs, AreAWholeNumberWithinReason)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    for (char const * number : {"0", "-1", "129", "99999999999999999999", "many", "2x", ""}) {
        Ended const ended = keld.run({"import", "a.xyz", "b.xyz", "--jobs", number});
        EXPECT_EQ(2, ended.code) << number;
        EXPECT_THAT(ended.err, HasSubstr("is not a whole number from 1 to 128.")) << number;
    }
}

TEST(KeldJobs, AreInTheHelp)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    EXPECT_THAT(keld.run({"--help"}).out,
                HasSubstr("\n  10 some of several files completed and others did not\n"
                          "When none of several files completes, the code is the one that they "
                          "share, or else 1.\n"));
    EXPECT_THAT(keld.run({"import", "--help"}).out, HasSubstr("-j,--jobs N"));
}

TEST(KeldJobs, PrintNoPoints)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    for (std::vector<std::string> const & option :
         {std::vector<std::string>{"--list-points"}, std::vector<std::string>{"--points", "1"}}) {
        std::vector<std::string> arguments = {"import", "a.xyz", "b.xyz"};
        arguments.insert(arguments.end(), option.begin(), option.end());
        Ended const ended = keld.run(arguments);
        EXPECT_EQ(2, ended.code);
        EXPECT_THAT(ended.err, HasSubstr("print the points of one file"));
    }
}

} // namespace
