// What becomes of a translator that takes too long or too much memory.
#include "process/keld_program.h"

#include <cstdio>
#include <gmock/gmock.h>
#include <ostream>

namespace {

using testing::HasSubstr;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;

struct Stage
{
    char const * name;
    char const * script;
};

void PrintTo(Stage const & stage, std::ostream * stream)
{
    *stream << stage.script;
}

constexpr char const * Exceeded =
    "the translator took longer than the 0.3 s that --time-limit allows";

/// A translator that would go on for ever, against everything that asks it to end.
class KeldTimeLimit : public testing::TestWithParam<Stage>
{};

TEST_P(KeldTimeLimit, EndsAnImport)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.set("KELD_GRACE_MS", "3600000");
    keld.installScripted("scripted",
                         std::string("ignore 1;ignore 2;ignore 15;") + GetParam().script);
    Ended const ended = keld.run({"import", "-q", "--time-limit", "0.3", "f.scripted"});
    EXPECT_EQ(9, ended.code);
    EXPECT_EQ("", ended.out);
    EXPECT_EQ(std::string("keld: f.scripted: ") + Exceeded + "; it was ended.\n", ended.err);
}

INSTANTIATE_TEST_SUITE_P(
    Stages, KeldTimeLimit,
    testing::Values(Stage{"BeforeTheFirstCommand", "forever"},
                    Stage{"BeforeTheFileIsAccepted", "options;read;forever"},
                    Stage{"AtWork", "options;read;frame 123;read;forever"},
                    Stage{"WithASegment",
                          "options;read;frame 123;read;create-segment 100000;forever"},
                    Stage{"WhileItTalks", "options;read;frame 123;read;flood"},
                    Stage{"InTheMiddleOfItsAnswer",
                          "options;read;frame 123;read;model 100;bytes 0900780a;forever"},
                    Stage{"WithoutItsPipe", "options;read;frame 123;read;close frames;forever"}),
    [](testing::TestParamInfo<Stage> const & row) { return row.param.name; });

class KeldTimeLimitOnExport : public testing::TestWithParam<Stage>
{};

TEST_P(KeldTimeLimitOnExport, EndsIt)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.set("KELD_GRACE_MS", "3600000");
    keld.installScripted("scripted",
                         std::string("ignore 1;ignore 2;ignore 15;") + GetParam().script);
    Ended const ended =
        keld.run({"export", "-q", "--time-limit", "0.3", "f.scripted", "--points", "10"});
    EXPECT_EQ(9, ended.code);
    EXPECT_EQ("", ended.out);
    EXPECT_EQ(std::string("keld: f.scripted: ") + Exceeded + "; it was ended.\n", ended.err);
}

INSTANTIATE_TEST_SUITE_P(Stages, KeldTimeLimitOnExport,
                         testing::Values(Stage{"BeforeTheFirstCommand", "forever"},
                                         Stage{"BeforeTheFileIsAccepted", "options;read;forever"},
                                         Stage{"AtWork", "options;read;frame 123;read;forever"}),
                         [](testing::TestParamInfo<Stage> const & row) { return row.param.name; });

struct Work
{
    char const * file;
    bool inScript; ///< the script waits for the executable
};

void PrintTo(Work const & work, std::ostream * stream)
{
    *stream << work.file << (work.inScript ? " below its script" : "");
}

/// Translators that the kit makes, which tell where they are.
class KeldTimeLimitOfKit : public testing::TestWithParam<Work>
{};

TEST_P(KeldTimeLimitOfKit, IsToldWithPhaseAndEntity)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    if (GetParam().inScript)
        tests::waitInScript(keld, "kit");
    // Long enough for the translator to come to its work on a busy machine.
    keld.start({"import", "-q", "--time-limit", "3", GetParam().file});
    // What the script started is the test's to reap.
    Ended const ended = keld.finish();
    EXPECT_EQ(9, ended.code);
    EXPECT_THAT(ended.err,
                HasSubstr(std::string("keld: ") + GetParam().file +
                          ": the translator took longer than the 3 s that --time-limit allows, in "
                          "the phase \"mapping\", at #12; it was ended.\n"));
}

INSTANTIATE_TEST_SUITE_P(Works, KeldTimeLimitOfKit,
                         testing::Values(Work{"end-hang.kit", false}, Work{"end-hang.kit", true},
                                         Work{"end-ignore.kit", false},
                                         Work{"end-ignore.kit", true}, Work{"end-spin.kit", false},
                                         Work{"end-spin.kit", true}));

TEST(KeldLimits, AStoppedTranslatorIsEnded)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "options;stop");
    EXPECT_EQ(9, keld.run({"import", "-q", "--time-limit", "0.3", "f.scripted"}).code);
}

TEST(KeldLimits, EndWithTheAnswer)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "options;read;frame 123;read;model 3;frame 120 i64 size;read;"
                                     "frame 126;read;sleep 4000;touch tidied;frame 126");
    // From there on the translator has its grace to tidy up.
    keld.set("KELD_GRACE_MS", "60000");
    Ended const ended = keld.run({"import", "-q", "--time-limit", "3", "f.scripted"});
    EXPECT_EQ(0, ended.code);
    EXPECT_EQ("", ended.err);
    EXPECT_EQ(1U, keld.files().names().count("tidied"));
}

TEST(KeldLimits, ConvertLimitsBothOfItsTranslators)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    EXPECT_EQ(9,
              keld.run({"convert", "-q", "--time-limit", "3", "end-hang.kit", "succeed.kit"}).code);
    Ended const ended =
        keld.run({"convert", "-q", "--time-limit", "3", "succeed.kit", "end-hang.kit"});
    EXPECT_EQ(9, ended.code);
    EXPECT_THAT(ended.err, HasSubstr("keld: end-hang.kit: the translator took longer"));
}

TEST(KeldLimits, InfoHasThemToo)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    EXPECT_EQ(9, keld.run({"info", "-q", "--time-limit", "1", "end-hang.kit"}).code);
    EXPECT_EQ(9, keld.run({"info", "-q", "--metadata", "--time-limit", "1", "end-hang.kit"}).code);
}

class KeldMemoryLimit : public testing::TestWithParam<bool>
{};

TEST_P(KeldMemoryLimit, EndsATranslatorThatGoesBeyondIt)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    if (GetParam())
        tests::waitInScript(keld, "kit");
    keld.start({"import", "-q", "--memory-limit", "100", "end-memory.kit"});
    Ended const ended = keld.finish();
    EXPECT_EQ(9, ended.code);
    EXPECT_THAT(ended.err,
                HasSubstr("MB of memory, more than the 100 MB that --memory-limit allows, in the "
                          "phase \"mapping\", at #12; it was ended.\n"));
    int taken = 0;
    auto const words = ended.err.find("the translator took ");
    ASSERT_NE(std::string::npos, words);
    ASSERT_EQ(1, std::sscanf(ended.err.c_str() + words, "the translator took %d MB", &taken));
    EXPECT_GT(taken, 100);
    EXPECT_LT(taken, 1100);
}

INSTANTIATE_TEST_SUITE_P(InScript, KeldMemoryLimit, testing::Bool());

TEST(KeldLimits, ATranslatorWithinThemIsLeftAlone)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    Ended const ended =
        keld.run({"import", "-q", "--time-limit", "600", "--memory-limit", "1000", "succeed.kit"});
    EXPECT_EQ(0, ended.code);
    EXPECT_THAT(ended.out, HasSubstr("points              3"));
}

TEST(KeldLimits, BothMayBeSet)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    Ended const slow =
        keld.run({"import", "-q", "--time-limit", "1", "--memory-limit", "1000", "end-hang.kit"});
    EXPECT_EQ(9, slow.code);
    EXPECT_THAT(slow.err, HasSubstr("--time-limit"));
    Ended const large = keld.run(
        {"import", "-q", "--time-limit", "600", "--memory-limit", "100", "end-memory.kit"});
    EXPECT_EQ(9, large.code);
    EXPECT_THAT(large.err, HasSubstr("--memory-limit"));
}

TEST(KeldLimits, TakeNumbersAbove0)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    for (char const * option : {"--time-limit", "--memory-limit"}) {
        for (char const * number : {"0", "-1", "x", "", "nan", "inf", "1e300"})
            EXPECT_EQ(2, keld.run({"import", "-q", option, number, "f.kit"}).code)
                << option << " " << number;
    }
}

TEST(KeldLimits, ASegmentOfATranslatorThatWasEndedIsGone)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "ignore 15;options;read;frame 123;read;create-segment 100000;"
                                     "touch started;forever");
    tests::waitInScript(keld, "scripted");
    pid_t const program = keld.start({"import", "-q", "--time-limit", "3", "f.scripted"});
    ASSERT_TRUE(tests::waitForFile(keld.files() / "started"));
    std::string const segment = "keld_" + std::to_string(program) + "_1";
    EXPECT_TRUE(tests::segmentIsThere(segment));
    EXPECT_EQ(9, keld.finish().code);
    EXPECT_FALSE(tests::segmentIsThere(segment));
}

} // namespace
