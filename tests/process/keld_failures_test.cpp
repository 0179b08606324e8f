#include "process/keld_program.h"

#include <keld-common/file_mapping.h>

#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <ostream>
#include <unistd.h>

namespace {

using testing::HasSubstr;
using tests::contentOf;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;

constexpr int NotAllowedHere = 77;

// Translators that are not there

TEST(KeldFailures, NoTranslatorForTheSuffix)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("part.foo", "");
    Ended const ended = keld.run({"import", "part.foo"});
    EXPECT_EQ(3, ended.code);
    EXPECT_THAT(ended.err, HasSubstr("keld: part.foo: the translator \"foo\" is not installed: "
                                     "there is no /"));
}

TEST(KeldFailures, NoSuffixAtAll)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    Ended const ended = keld.run({"import", "part"});
    EXPECT_EQ(3, ended.code);
    EXPECT_EQ("keld: part: the translator is not known: the file name has no suffix that names "
              "one.\n",
              ended.err);
}

TEST(KeldFailures, NoTranslatorForTheTargetOfAConversion)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("in.xyz", "1 2 3\n");
    Ended const ended = keld.run({"convert", "-q", "in.xyz", "out.foo"});
    EXPECT_EQ(3, ended.code);
    EXPECT_EQ(std::set<std::string>{"in.xyz"}, keld.files().names());
}

TEST(KeldFailures, AProductTranslatorThatIsNotInstalled)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    Ended const ended = keld.run({"import", "part.jt"});
    EXPECT_EQ(3, ended.code);
    EXPECT_THAT(ended.err, HasSubstr("keld: part.jt: the translator \"jt\" is not installed.\n"
                                     "    JT_OPEN_PATH: not set\n"));
    EXPECT_THAT(ended.err, HasSubstr("/bin/keld_jt.sh: not there\n"));
}

TEST(KeldFailures, AScriptThatIsNotExecutable)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "");
    std::filesystem::permissions(keld.bin() + "/keld_scripted.sh", std::filesystem::perms(0644));
    Ended const ended = keld.run({"import", "f.scripted"});
    EXPECT_EQ(3, ended.code);
    EXPECT_EQ("keld: f.scripted: the translator \"scripted\" cannot be started: " + keld.bin() +
                  "/keld_scripted.sh is not executable.\n    " + keld.bin() +
                  "/keld_scripted.sh: not executable\n    " + keld.bin() +
                  "/keld_scripted_linux_x86_64: found\n",
              ended.err);
}

TEST(KeldFailures, AnExecutableThatIsMissingBesideItsScript)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "");
    std::filesystem::remove(keld.bin() + "/keld_scripted_linux_x86_64");
    Ended const ended = keld.run({"import", "f.scripted"});
    EXPECT_EQ(3, ended.code);
    EXPECT_EQ("keld: f.scripted: the translator \"scripted\" is not installed: there is no " +
                  keld.bin() + "/keld_scripted_linux_x86_64.\n    " + keld.bin() +
                  "/keld_scripted.sh: found\n    " + keld.bin() +
                  "/keld_scripted_linux_x86_64: not there\n",
              ended.err);
}

// Translators that die

struct Death
{
    char const * name;
    char const * script;
    char const * words; ///< how it ended
};

void PrintTo(Death const & death, std::ostream * stream)
{
    *stream << death.script;
}

std::string nameOf(testing::TestParamInfo<Death> const & info)
{
    return info.param.name;
}

constexpr char const * Exit0 = "ended without an answer, with exit code 0";
constexpr char const * Exit1 = "ended without an answer, with exit code 1";
constexpr char const * Kill =
    "ended without an answer, killed by signal 9 (Killed); the system kills "
    "like this when memory runs out";
constexpr char const * Fault = "ended without an answer, killed by signal 11 (Segmentation fault)";
constexpr char const * Silence = "stopped talking without an answer and had to be ended";

/// What is said of a fault behind the words for it.
std::string hintFor(std::string const & words)
{
    return words == Fault ? "keld: f.scripted: --report DIR keeps a crash report of such a run.\n"
                          : "";
}

class KeldImportDeath : public testing::TestWithParam<Death>
{};

TEST_P(KeldImportDeath, IsToldAndLeavesNothing)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", GetParam().script);
    Ended const ended = keld.run({"import", "-q", "f.scripted"});
    EXPECT_EQ(4, ended.code);
    EXPECT_EQ("", ended.out);
    std::string const words = GetParam().words;
    EXPECT_EQ("keld: f.scripted: the translator " + words + "; nothing came of the run.\n" +
                  hintFor(words),
              ended.err);
}

INSTANTIATE_TEST_SUITE_P(
    Stages, KeldImportDeath,
    testing::Values(
        Death{"AtOnce", "exit 1", Exit1}, Death{"AtOnceBySignal", "die 11", Fault},
        Death{"BeforeTheFileIsAccepted", "options;read;exit 1", Exit1},
        Death{"AfterTheFileIsAccepted", "options;read;frame 123;die 9", Kill},
        Death{"AfterTheSegmentIsNamed", "options;read;frame 123;read;exit 0", Exit0},
        Death{"InTheMiddleOfTheModel", "options;read;frame 123;read;create-segment 100000;die 9",
              Kill},
        Death{"BeforeItsAnswer", "options;read;frame 123;read;model 100;die 9", Kill},
        Death{"InTheMiddleOfItsAnswer",
              "options;read;frame 123;read;model 100;bytes 0900780a;die 11", Fault},
        Death{"WithoutItsPipe", "options;read;frame 123;read;close frames;forever", Silence},
        Death{"WithAnEndMarkAlone", "options;read;frame 123;read;frame 126;read;frame 126", Exit0}),
    nameOf);

class KeldExportDeath : public testing::TestWithParam<Death>
{};

TEST_P(KeldExportDeath, IsToldAndLeavesNothing)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", GetParam().script);
    Ended const ended = keld.run({"export", "-q", "f.scripted", "--points", "100"});
    EXPECT_EQ(4, ended.code);
    EXPECT_EQ("", ended.out);
    std::string const words = GetParam().words;
    EXPECT_EQ("keld: f.scripted: the translator " + words + "; nothing came of the run.\n" +
                  hintFor(words),
              ended.err);
    EXPECT_EQ(std::set<std::string>{"installation"}, keld.files().names());
}

INSTANTIATE_TEST_SUITE_P(
    Stages, KeldExportDeath,
    testing::Values(Death{"AtOnce", "exit 1", Exit1},
                    Death{"BeforeTheFileIsAccepted", "options;read;die 11", Fault},
                    Death{"AfterTheFileIsAccepted", "options;read;frame 123;exit 0", Exit0},
                    Death{"AfterTheModelIsNamed", "options;read;frame 123;read;die 9", Kill},
                    Death{"WithoutItsPipe", "options;read;frame 123;read;close frames;forever",
                          Silence}),
    nameOf);

TEST(KeldFailures, ATranslatorThatDiesAfterItsAnswerHasAnswered)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "options;read;frame 123;read;model 3;frame 120 i64 size;read;"
                                     "die 9");
    Ended const ended = keld.run({"import", "-q", "f.scripted"});
    EXPECT_EQ(0, ended.code);
    EXPECT_THAT(ended.out, HasSubstr("points              3"));
}

TEST(KeldFailures, ATranslatorThatNeverQuitsIsEnded)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "ignore 15;options;read;frame 123;read;model 3;"
                                     "frame 120 i64 size;read;frame 126;forever");
    EXPECT_EQ(0, keld.run({"import", "-q", "f.scripted"}).code);
}

// Models that do not get across

TEST(KeldFailures, AModelThatIsNotSound)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "options;read;frame 123;read;create-segment 40;"
                                     "frame 120 i64 size;read;frame 126;read;frame 126");
    Ended const ended = keld.run({"import", "-q", "f.scripted"});
    EXPECT_EQ(5, ended.code);
    EXPECT_EQ("", ended.out);
    EXPECT_THAT(ended.err, HasSubstr("keld: f.scripted: Failed! (exit status 0)\n"));
}

TEST(KeldFailures, ASegmentThatIsNotThere)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.installScripted("scripted", "options;read;frame 123;read;frame 120 i64 108;read;frame 126;"
                                     "read;frame 126");
    EXPECT_EQ(5, keld.run({"import", "-q", "f.scripted"}).code);
}

/// Holds the segment that the program will want, whose name is made of its process id.
class SegmentThief
{
public:
    explicit SegmentThief(KeldProgram & keld)
    {
        keld.before([this] {
            while (access(m_Ready.c_str(), F_OK) != 0)
                usleep(1000);
        });
        m_Ready = keld.files() / "ready";
    }
    ~SegmentThief() { CloseHandle(m_Handle); }

    void takeSegmentOf(pid_t program)
    {
        std::string const name = "keld_" + std::to_string(program) + "_1";
        m_Handle = CreateFileMappingA(KELD_INVALID_HANDLE_VALUE, nullptr, KELD_PAGE_READWRITE, 0,
                                      4096, name.c_str());
        EXPECT_NE(nullptr, m_Handle);
        std::ofstream{m_Ready};
    }

private:
    std::string m_Ready;
    void * m_Handle = nullptr;
};

TEST(KeldFailures, ASegmentNameThatIsTakenOnImport)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("f.xyz", "1 2 3\n");
    SegmentThief thief(keld);
    thief.takeSegmentOf(keld.start({"import", "-q", "f.xyz"}));
    Ended const ended = keld.finish();
    EXPECT_EQ(1, ended.code);
    EXPECT_EQ("", ended.out);
    EXPECT_THAT(ended.err, HasSubstr("keld_xyz: "));
    EXPECT_THAT(ended.err, HasSubstr("keld: f.xyz: Failed! (exit status 0)\n"));
}

TEST(KeldFailures, ASegmentNameThatIsTakenOnExport)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    SegmentThief thief(keld);
    thief.takeSegmentOf(keld.start({"export", "-q", "f.xyz", "--point", "1", "2", "3"}));
    Ended const ended = keld.finish();
    EXPECT_EQ(5, ended.code);
    EXPECT_EQ("", ended.out);
    EXPECT_EQ(std::set<std::string>{"ready"}, keld.files().names());
}

TEST(KeldFailures, AFullSharedMemoryOnImport)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("f.xyz", [] {
        std::string lines;
        for (int i = 0; i < 10000; ++i)
            lines += "1 2 3\n";
        return lines;
    }());
    keld.before([] { tests::mountSmall("/dev/shm", "64k"); });
    Ended const ended = keld.run({"import", "-q", "f.xyz"});
    if (ended.code == NotAllowedHere)
        GTEST_SKIP() << "this machine does not allow file systems of one's own";
    EXPECT_EQ(1, ended.code);
    EXPECT_EQ("", ended.out);
    EXPECT_THAT(ended.err, HasSubstr("280108")); // bytes needed: 108, and 28 for each point
    EXPECT_THAT(ended.err, HasSubstr("keld: f.xyz: Failed! (exit status 0)\n"));
}

TEST(KeldFailures, AFullSharedMemoryOnExport)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    std::string const path = keld.file("f.xyz", "old");
    keld.before([] { tests::mountSmall("/dev/shm", "64k"); });
    Ended const ended = keld.run({"export", "-q", "f.xyz", "--points", "10000"});
    if (ended.code == NotAllowedHere)
        GTEST_SKIP() << "this machine does not allow file systems of one's own";
    EXPECT_EQ(5, ended.code);
    EXPECT_EQ("", ended.out);
    EXPECT_THAT(ended.err, HasSubstr("280108"));
    EXPECT_EQ("old", contentOf(path));
}

// Places that cannot be written

TEST(KeldFailures, ATemporaryDirectoryWithoutRightsIsPassedOver)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("f.xyz", "1 2 3\n");
    std::filesystem::create_directory(keld.files() / "closed");
    std::filesystem::permissions(keld.files() / "closed", std::filesystem::perms(0500));
    keld.set("TMPDIR", keld.files().path());
    keld.set("TMP", keld.files() / "closed");
    keld.before(tests::obeyPermissions);
    EXPECT_EQ(0, keld.run({"import", "-q", "f.xyz"}).code);
    EXPECT_EQ((std::set<std::string>{"closed", "f.xyz"}), keld.files().names());
}

class KeldWithoutTemporaryDirectory : public testing::TestWithParam<std::vector<std::string>>
{};

TEST_P(KeldWithoutTemporaryDirectory, SaysSo)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("f.xyz", "1 2 3\n");
    for (char const * name : {"TMP", "TMPDIR", "TEMP", "TEMPDIR", "HOME", "PWD"})
        keld.set(name, "/tmp");
    keld.before([] { tests::mountReadOnly("/tmp"); });
    Ended const ended = keld.run(GetParam());
    if (ended.code == NotAllowedHere)
        GTEST_SKIP() << "this machine does not allow file systems of one's own";
    EXPECT_EQ(5, ended.code);
    EXPECT_EQ("", ended.out);
    EXPECT_THAT(ended.err, HasSubstr("    Error : Cannot write option xml file to any candidate "
                                     "directory\n"));
    EXPECT_THAT(ended.err, HasSubstr(": Unexpected error! (exit status 11)\n"));
    EXPECT_THAT(ended.err, HasSubstr(": the options of the run could not be written to a temporary "
                                     "directory.\n"));
    EXPECT_EQ(std::set<std::string>{"f.xyz"}, keld.files().names());
}

INSTANTIATE_TEST_SUITE_P(Commands, KeldWithoutTemporaryDirectory,
                         testing::Values(std::vector<std::string>{"import", "-q", "f.xyz"},
                                         std::vector<std::string>{"export", "-q", "out.xyz"}));

TEST(KeldFailures, AnOptionThatTheFileCannotHold)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.file("f.xyz", "1 2 3\n");
    Ended const ended = keld.run({"import", "-q", "-o", "bell=\a", "f.xyz"});
    EXPECT_EQ(5, ended.code);
    EXPECT_THAT(ended.err, HasSubstr("bell"));
}

void expectNotWritten(KeldProgram & keld, std::string const & target, std::string const & why)
{
    Ended const ended = keld.run({"export", "-q", target, "--point", "1", "2", "3"});
    EXPECT_EQ(1, ended.code);
    EXPECT_EQ("", ended.out);
    EXPECT_EQ("keld_xyz: Error : Cannot write " + target + ": " + why + ".\nkeld: " + target +
                  ": Export procedure failed (exit status 1)\n",
              ended.err);
}

TEST(KeldFailures, ATargetInAMissingDirectory)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    expectNotWritten(keld, "no/out.xyz", "No such file or directory");
}

TEST(KeldFailures, ATargetThatIsADirectory)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    std::filesystem::create_directory(keld.files() / "out.xyz");
    expectNotWritten(keld, "out.xyz", "Is a directory");
}

TEST(KeldFailures, ATargetThatIsNoRegularFile)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    std::filesystem::create_symlink("/dev/null", keld.files() / "null.xyz");
    expectNotWritten(keld, "null.xyz", "it is no regular file");
}

TEST(KeldFailures, ATargetInADirectoryWithoutRights)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    std::filesystem::create_directory(keld.files() / "closed");
    std::filesystem::permissions(keld.files() / "closed", std::filesystem::perms(0500));
    keld.before(tests::obeyPermissions);
    expectNotWritten(keld, "closed/out.xyz", "Permission denied");
}

TEST(KeldFailures, ATargetThatIsWriteProtected)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    std::string const path = keld.file("out.xyz", "old");
    std::filesystem::permissions(path, std::filesystem::perms(0400));
    keld.before(tests::obeyPermissions);
    expectNotWritten(keld, "out.xyz", "Permission denied");
    EXPECT_EQ("old", contentOf(path));
}

TEST(KeldFailures, ATargetOnAFullFileSystem)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    std::filesystem::create_directory(keld.files() / "small");
    std::string const directory = keld.files() / "small";
    keld.before([directory] { tests::mountSmall(directory, "64k"); });
    Ended const ended = keld.run({"export", "-q", "small/out.xyz", "--points", "100000"});
    if (ended.code == NotAllowedHere)
        GTEST_SKIP() << "this machine does not allow file systems of one's own";
    EXPECT_EQ(1, ended.code);
    EXPECT_THAT(ended.err, HasSubstr("Cannot write small/out.xyz: No space left on device."));
}

} // namespace
