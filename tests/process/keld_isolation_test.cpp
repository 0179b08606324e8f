// Translators that end in the middle of their work: what is said of it, and that nothing is left.
#include "process/keld_program.h"

#include <gmock/gmock.h>
#include <ostream>
#include <unistd.h>

namespace {

using testing::EndsWith;
using testing::HasSubstr;
using testing::Not;
using testing::StartsWith;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;

struct End
{
    char const * how;
    char const * words;
    bool isCrash;
};

void PrintTo(End const & end, std::ostream * stream)
{
    *stream << end.how;
}

constexpr char const * Hint = ": --report DIR keeps a crash report of such a run.\n";

class KeldTranslatorEnd : public testing::TestWithParam<End>
{
protected:
    static void expectWords(std::string const & file, std::string const & err)
    {
        std::string const words = "keld: " + file + ": the translator ended without an answer, " +
                                  GetParam().words + "; nothing came of the run.\n";
        EXPECT_THAT(err, EndsWith(words + (GetParam().isCrash ? "keld: " + file + Hint : "")));
    }
};

TEST_P(KeldTranslatorEnd, InAnImportIsToldWithPhaseAndEntity)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    std::string const file = std::string("end-") + GetParam().how + ".kit";

    Ended const ended = keld.run({"import", "-q", file});

    EXPECT_EQ(4, ended.code);
    EXPECT_EQ("", ended.out);
    expectWords(file, ended.err);
}

TEST_P(KeldTranslatorEnd, InAnExportIsToldWithPhaseAndEntity)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    std::string const file = std::string("end-") + GetParam().how + ".kit";

    Ended const ended = keld.run({"export", "-q", file, "--points", "10"});

    EXPECT_EQ(4, ended.code);
    EXPECT_EQ("", ended.out);
    expectWords(file, ended.err);
    EXPECT_EQ(std::set<std::string>{"installation"}, keld.files().names());
}

INSTANTIATE_TEST_SUITE_P(
    Ends, KeldTranslatorEnd,
    testing::Values(
        End{"segv", "killed by signal 11 (Segmentation fault), in the phase \"mapping\", at #12",
            true},
        End{"abort", "killed by signal 6 (Aborted), in the phase \"mapping\", at #12", true},
        End{"terminate", "killed by signal 6 (Aborted), in the phase \"mapping\", at #12", true},
        End{"kill",
            "killed by signal 9 (Killed), in the phase \"mapping\", at #12; the system kills like "
            "this when memory runs out",
            false},
        End{"exit", "with exit code 3, in the phase \"mapping\", at #12", false},
        End{"quietly", "with exit code 0, in the phase \"mapping\", at #12", false}),
    [](testing::TestParamInfo<End> const & row) { return row.param.how; });

TEST(KeldIsolation, AnExceptionIsToldWithPhaseAndEntity)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    EXPECT_EQ("    Error : a standard exception (in the phase \"mapping\", at #12)\n"
              "keld: place-throw-standard.kit: Failed! (exit status 0)\n",
              keld.run({"import", "-q", "place-throw-standard.kit"}).err);
    EXPECT_THAT(keld.run({"import", "-q", "place-throw-memory.kit"}).err,
                StartsWith("    Error : There is not enough memory for this model (in the phase "
                           "\"mapping\", at #12).\n"));
    EXPECT_THAT(keld.run({"import", "-q", "place-throw-other.kit"}).err,
                StartsWith("    Error : The translator failed without saying why (in the phase "
                           "\"mapping\", at #12).\n"));
}

TEST(KeldIsolation, ATranslatorMayAskWhereItIs)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    EXPECT_THAT(keld.run({"import", "-q", "place-refused.kit"}).err,
                StartsWith("    Error : refused in the phase \"mapping\", at #12\n"));
}

TEST(KeldIsolation, ANewPhaseIsAtNoEntity)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    EXPECT_EQ("keld: place.kit: the translator ended without an answer, with exit code 0, in the "
              "phase \"mapping\"; nothing came of the run.\n",
              keld.run({"import", "-q", "place.kit"}).err);
}

TEST(KeldIsolation, PlacesAreCutAndDriveNoTerminal)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    EXPECT_EQ("keld: place-hostile.kit: the translator ended without an answer, with exit code 0, "
              "in the phase \"\\x1b[2J" +
                  std::string(196, 'p') + "...\", at \\x07\\x0a" + std::string(198, '#') +
                  "...; nothing came of the run.\n",
              keld.run({"import", "-q", "place-hostile.kit"}).err);
}

struct Bytes
{
    char const * name;
    char const * statement;
    std::string words;
};

void PrintTo(Bytes const & bytes, std::ostream * stream)
{
    *stream << bytes.statement;
}

/// A translator that puts what it likes where the kit would put phase and entity.
class KeldHostileTrail : public testing::TestWithParam<Bytes>
{};

TEST_P(KeldHostileTrail, DoesNoHarm)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted",
                         std::string("options;") + GetParam().statement + ";read;exit 0");
    Ended const ended = keld.run({"import", "-q", "f.scripted"});
    EXPECT_EQ(4, ended.code);
    EXPECT_EQ("keld: f.scripted: the translator ended without an answer, with exit code 0" +
                  GetParam().words + "; nothing came of the run.\n",
              ended.err);
}

INSTANTIATE_TEST_SUITE_P(Contents, KeldHostileTrail,
                         testing::Values(Bytes{"Full", "trail fill 4096",
                                               ", in the phase \"" + std::string(200, 'A') +
                                                   "...\", at " + std::string(200, 'A') + "..."},
                                         Bytes{"CutShort", "trail cut 10",
                                               ", in the phase \"" + std::string(10, 'A') + "\""},
                                         Bytes{"Empty", "trail cut 0", ""},
                                         Bytes{"TooLong", "trail fill 100000",
                                               ", in the phase \"" + std::string(200, 'A') +
                                                   "...\", at " + std::string(200, 'A') + "..."}),
                         [](testing::TestParamInfo<Bytes> const & row) { return row.param.name; });

TEST(KeldIsolation, AScriptsExitCodeIsReadAsTheSignalBelowIt)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    tests::waitInScript(keld, "kit");
    Ended const ended = keld.run({"import", "-q", "end-segv.kit"});
    EXPECT_EQ(4, ended.code);
    EXPECT_THAT(ended.err,
                EndsWith("with exit code 139, which from a script means signal 11 (Segmentation "
                         "fault), in the phase \"mapping\", at #12; nothing came of the run.\n"
                         "keld: end-segv.kit: --report DIR keeps a crash report of such a run.\n"));
}

TEST(KeldIsolation, ACrashReportIsNamedWhereOneIsKept)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    Ended const ended = keld.run({"import", "-q", "--report", "r", "end-segv.kit"});
    EXPECT_EQ(4, ended.code);
    EXPECT_THAT(ended.err, HasSubstr("Crash dump: " + (keld.files() / "r/import/vorn_dump_")));
    EXPECT_THAT(ended.err, HasSubstr(", in the phase \"mapping\", at #12;"));
    EXPECT_THAT(ended.err, Not(HasSubstr("--report DIR")));
}

TEST(KeldIsolation, WhatATranslatorPrintsIsNoOutputOfTheHost)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);

    Ended const silent = keld.run({"info", "-q", "--json", "succeed.kit"});
    Ended const printing = keld.run({"info", "-q", "--json", "print.kit"});

    EXPECT_EQ(0, printing.code);
    EXPECT_THAT(silent.out, StartsWith("{"));
    std::string expected = silent.out;
    for (auto at = expected.find("succeed"); at != std::string::npos; at = expected.find("succeed"))
        expected.replace(at, 7, "print");
    EXPECT_EQ(expected, printing.out);
    for (char const * words :
         {"as an error\n", "by printf\n", "by a stream\n", "by descriptor\n", "at the end\n"})
        EXPECT_THAT(printing.err, HasSubstr(words));
}

TEST(KeldIsolation, WhatATranslatorPrintsIsInNoFileOfIts)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    // Its own descriptors come to stand where a library prints.
    keld.before([] {
        for (int const descriptor : {0, 1, 2})
            close(descriptor);
    });
    EXPECT_EQ(0, keld.run({"export", "-q", "print.kit"}).code);
    EXPECT_EQ("half whole\n", tests::contentOf(keld.files() / "print.kit"));
}

} // namespace
