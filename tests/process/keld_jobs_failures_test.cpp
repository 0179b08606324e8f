#include "process/keld_jobs_program.h"

#include <csignal>
#include <gmock/gmock.h>

namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;
using tests::waitForFile;

TEST(KeldJobsFailures, OneBadFileDisturbsNoOther)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);

    Ended const ended =
        keld.run({"import", "-q", "a.kit", "crash.kit", "throw-memory.kit", "b.kit"});

    EXPECT_EQ(10, ended.code);
    std::string const table = tests::withoutTimes(ended.out);
    EXPECT_THAT(table, HasSubstr("\na.kit             completed T       3     0\n"));
    EXPECT_THAT(table, HasSubstr("\ncrash.kit         failed T\n"
                                 "  the translator ended without an answer, killed by signal 11 "
                                 "(Segmentation fault); nothing came of the run.\n"));
    EXPECT_THAT(table, HasSubstr("\nb.kit             completed T       3     0\n"));
    EXPECT_THAT(table, HasSubstr("\n2 of 4 files completed, 2 failed.\n"));
}

TEST(KeldJobsFailures, AreDirectoriesAndFilesThatAreNotThere)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("a.xyz", "1 2 3\n");

    Ended const ended = keld.run({"import", "-q", "missing.xyz", ".", "", "a.xyz"});

    EXPECT_EQ(10, ended.code);
    EXPECT_THAT(ended.out, AllOf(HasSubstr("Cannot read missing.xyz: No such file or directory"),
                                 HasSubstr("\n\"\" "), HasSubstr("this is no file name."),
                                 HasSubstr("1 of 4 files completed, 3 failed.")));
}

TEST(KeldJobsFailures, OfOneKindHaveTheCodeOfThatKind)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    EXPECT_EQ(3, keld.run({"import", "-q", "a.none", "b.none"}).code);
    EXPECT_EQ(2, keld.run({"import", "-q", "two\nlines.xyz", ""}).code);
}

TEST(KeldJobsFailures, OfSeveralKindsHaveTheCodeOfAFailure)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    EXPECT_EQ(1, keld.run({"import", "-q", "crash.kit", "a.none"}).code);
}

TEST(KeldJobsFailures, AreCancelledOnesToo)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    Ended const ended = keld.run({"import", "-q", "fail-9.kit", "fail-9.kit"});
    EXPECT_EQ(6, ended.code);
    EXPECT_THAT(ended.out, HasSubstr("0 of 2 files completed, 2 cancelled.\n"));
}

/// The one worker that runs after `file`, which its translator makes, has come.
pid_t workerBehind(KeldProgram const & keld, pid_t program, std::string const & file)
{
    if (!waitForFile(keld.files() / file))
        return -1;
    auto const workers = tests::childrenOf(program);
    return workers.size() == 1 ? workers.front() : -1;
}

TEST(KeldJobsFailures, AreWorkersThatAreKilled)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    pid_t const program = keld.start({"import", "-q", "--jobs", "1", "work.kit", "b.kit"});
    pid_t const worker = workerBehind(keld, program, "work.kit.working");
    ASSERT_GT(worker, 0);

    kill(worker, SIGKILL);

    Ended const ended = keld.finish();
    EXPECT_EQ(10, ended.code);
    EXPECT_THAT(tests::withoutTimes(ended.out),
                HasSubstr("work.kit  failed T\n  its worker was ended by signal 9 (Killed).\n"
                          "b.kit     completed T       3     0\n"));
    EXPECT_EQ(std::set<std::string>(), keld.temporaryFiles());
}

TEST(KeldJobsFailures, LeaveNoOptionsFileAndNoTranslatorThatIsDeaf)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "ignore 15;touch started;forever");
    pid_t const program = keld.start({"import", "-q", "-j", "1", "a.scripted", "b.none"});
    pid_t const worker = workerBehind(keld, program, "started");
    ASSERT_GT(worker, 0);
    EXPECT_EQ(1U, keld.temporaryFiles().size());

    kill(worker, SIGKILL);

    EXPECT_EQ(1, keld.finish().code);
    EXPECT_EQ(std::set<std::string>(), keld.temporaryFiles());
}

TEST(KeldJobsFailures, LeaveNoTemporaryFileNamedAfterTheWorker)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    tests::wrapTranslator(keld, "kit",
                          "touch \"$TMP/keld_note_${PPID}_1\" \"$TMP/keld_note_1_${PPID}\"\n"
                          "exec \"$TRANSLATOR\" \"$@\"");
    pid_t const program = keld.start({"import", "-q", "-j", "1", "work.kit", "b.none"});
    pid_t const worker = workerBehind(keld, program, "work.kit.working");
    ASSERT_GT(worker, 0);

    kill(worker, SIGKILL);

    EXPECT_EQ(1, keld.finish().code);
    EXPECT_EQ(std::set<std::string>{"keld_note_1_" + std::to_string(worker)},
              keld.temporaryFiles());
}

TEST(KeldJobsFailures, LeaveNoSegment)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted",
                         "options;read;frame 123;read;model 1000;touch started;forever");
    pid_t const program = keld.start({"import", "-q", "-j", "1", "a.scripted", "b.none"});
    pid_t const worker = workerBehind(keld, program, "started");
    ASSERT_GT(worker, 0);
    std::string const segment = "keld_" + std::to_string(worker) + "_1";
    EXPECT_TRUE(tests::segmentIsThere(segment));

    kill(worker, SIGKILL);

    EXPECT_EQ(1, keld.finish().code);
    EXPECT_FALSE(tests::segmentIsThere(segment));
}

TEST(KeldJobsFailures, MayLieInTheReportDirectory)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("a.xyz", "1 2 3\n");
    keld.file("b.xyz", "1 2 3\n");
    keld.file("r", "no directory");
    Ended const ended = keld.run({"import", "-q", "--report", "r", "a.xyz", "b.xyz"});
    EXPECT_EQ(7, ended.code);
    EXPECT_THAT(ended.out, HasSubstr("Not a directory"));
}

} // namespace
