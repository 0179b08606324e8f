#include "support/leftovers.h"
#include "unit/common/child.h"

#include <keld-common/files.h>

#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <libxml/parser.h>
#include <libxml/tree.h>
#include <memory>
#include <sched.h>
#include <sys/mount.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace tests;

namespace {

constexpr int s_Skipped = 77;
constexpr uid_t s_Nobody = 65534;

class Files : public testing::Test
{
protected:
    static std::string textOf(char * allocated)
    {
        std::string text = allocated == nullptr ? "(null)" : allocated;
        std::free(allocated);
        return text;
    }

    static unsigned modeOf(std::string const & path)
    {
        struct stat status = {};
        return ::lstat(path.c_str(), &status) == 0 ? status.st_mode : 0;
    }

    /// Runs `body` in a child without the rights of the superuser.
    static void withoutPrivileges(std::function<void()> const & body)
    {
        expectWellInFork([&body] {
            bool const dropped = ::geteuid() != 0 || ::setresuid(s_Nobody, s_Nobody, s_Nobody) == 0;
            ASSERT_TRUE(dropped);
            body();
        });
    }

private:
    LeftoverGuard m_Guard;

protected:
    TemporaryDirectory m_Directory;
};

struct DocumentDeleter
{
    void operator()(xmlDoc * document) const { xmlFreeDoc(document); }
};

using Document = std::unique_ptr<xmlDoc, DocumentDeleter>;

xmlChar const * asXml(char const * text)
{
    return reinterpret_cast<xmlChar const *>(text);
}

Document smallDocument(std::string const & content = "a&amp;b \xC3\xA4")
{
    Document document(xmlNewDoc(asXml("1.0")));
    xmlNode * const root = xmlNewDocNode(document.get(), nullptr, asXml("root"), nullptr);
    xmlDocSetRootElement(document.get(), root);
    xmlNewChild(root, nullptr, asXml("data"), asXml(content.c_str()));
    return document;
}

constexpr char s_SmallText[] = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                               "<root>\n  <data>a&amp;b \xC3\xA4</data>\n</root>\n";

int save(std::string const & path, Document const & document)
{
    return xmlSaveFormatFileEnc_utf8(path.c_str(), document.get(), "UTF-8", 1);
}

} // namespace

TEST_F(Files, AVariableIsReadAsANewText)
{
    ScopedEnvironment const variable("SOME_VARIABLE", "\xC3\xA4 b");
    char * const first = getenv_utf8("SOME_VARIABLE");
    char * const second = getenv_utf8("SOME_VARIABLE");
    EXPECT_NE(first, second);
    EXPECT_EQ(textOf(first), "\xC3\xA4 b");
    EXPECT_EQ(textOf(second), "\xC3\xA4 b");
}

TEST_F(Files, AVariableExistsAlsoWhenItIsEmpty)
{
    {
        ScopedEnvironment const variable("SOME_VARIABLE", "");
        EXPECT_NE(envexists_utf8("SOME_VARIABLE"), 0);
        EXPECT_EQ(textOf(getenv_utf8("SOME_VARIABLE")), "");
    }
    EXPECT_EQ(envexists_utf8("SOME_VARIABLE"), 0);
    EXPECT_EQ(getenv_utf8("SOME_VARIABLE"), nullptr);
    EXPECT_EQ(envexists_utf8(nullptr), 0);
    EXPECT_EQ(getenv_utf8(nullptr), nullptr);
}

TEST_F(Files, AccessIsTestedForAllThatIsAsked)
{
    ::chmod(m_Directory.path().c_str(), 0755);
    std::string const readable = m_Directory / "readable";
    std::ofstream(readable) << "x";
    ::chmod(readable.c_str(), 0444);
    std::string const program = m_Directory / "program";
    std::ofstream(program) << "x";
    ::chmod(program.c_str(), 0555);
    withoutPrivileges([&readable, &program] {
        EXPECT_EQ(iaccess(readable.c_str(), "e"), 0);
        EXPECT_EQ(iaccess(readable.c_str(), "r"), 0);
        EXPECT_EQ(iaccess(readable.c_str(), "er"), 0);
        EXPECT_EQ(iaccess(readable.c_str(), ""), 0);
        EXPECT_EQ(iaccess(readable.c_str(), "w"), -1);
        EXPECT_EQ(errno, EACCES);
        EXPECT_EQ(iaccess(readable.c_str(), "wr"), -1);
        EXPECT_EQ(iaccess(readable.c_str(), "x"), -1);
        EXPECT_EQ(iaccess(program.c_str(), "rx"), 0);
    });
    EXPECT_EQ(iaccess((m_Directory / "missing").c_str(), "e"), -1);
    EXPECT_EQ(errno, ENOENT);
}

TEST_F(Files, AccessRefusesWhatItDoesNotKnow)
{
    EXPECT_EQ(iaccess("/", "q"), -1);
    EXPECT_EQ(errno, EINVAL);
    EXPECT_EQ(iaccess(nullptr, "e"), -1);
    EXPECT_EQ(iaccess("/", nullptr), -1);
}

TEST_F(Files, TheTemporaryDirectoryIsTheFirstOfTheVariables)
{
    char const * const names[] = {"TMP", "TMPDIR", "TEMP", "TEMPDIR"};
    for (char const * name : names)
        std::filesystem::create_directory(m_Directory / name);
    ScopedEnvironment const tmp("TMP", m_Directory / "TMP");
    ScopedEnvironment const tmpdir("TMPDIR", m_Directory / "TMPDIR");
    ScopedEnvironment const temp("TEMP", m_Directory / "TEMP");
    ScopedEnvironment const tempdir("TEMPDIR", m_Directory / "TEMPDIR");
    ScopedEnvironment const home("HOME", m_Directory.path().string());
    for (char const * name : names) {
        EXPECT_EQ(textOf(get_tmp_dir()), (m_Directory / name) + "/");
        std::filesystem::remove(m_Directory / name);
    }
    EXPECT_EQ(textOf(get_tmp_dir()), "/tmp/");
}

TEST_F(Files, TheTemporaryDirectoryEndsInOneSeparator)
{
    ScopedEnvironment const tmp("TMP", m_Directory.path().string() + "/");
    EXPECT_EQ(textOf(get_tmp_dir()), m_Directory.path().string() + "/");
}

TEST_F(Files, AnEmptyVariableOrAFileIsNoTemporaryDirectory)
{
    std::ofstream(m_Directory / "file") << "x";
    ScopedEnvironment const tmp("TMP", "");
    ScopedEnvironment const tmpdir("TMPDIR", m_Directory / "file");
    ScopedEnvironment const temp("TEMP", m_Directory.path().string());
    EXPECT_EQ(textOf(get_tmp_dir()), m_Directory.path().string() + "/");
}

TEST_F(Files, ADirectoryWithoutRightsIsNoTemporaryDirectory)
{
    std::filesystem::create_directory(m_Directory / "closed");
    ::chmod(m_Directory.path().c_str(), 0755);
    ::chmod((m_Directory / "closed").c_str(), 0555);
    ScopedEnvironment const tmp("TMP", m_Directory / "closed");
    ScopedEnvironment const tmpdir("TMPDIR", std::nullopt);
    ScopedEnvironment const temp("TEMP", std::nullopt);
    ScopedEnvironment const tempdir("TEMPDIR", std::nullopt);
    withoutPrivileges([] { EXPECT_EQ(textOf(get_tmp_dir()), "/tmp/"); });
}

TEST_F(Files, HomeAndTheWorkingDirectoryServeWhereTmpDoesNot)
{
    int const status = statusOfFork([] {
        // An unwritable file system over /tmp would hide the directory of this test.
        TemporaryDirectory const elsewhere("/var/tmp");
        std::filesystem::create_directory(elsewhere / "home");
        std::filesystem::create_directory(elsewhere / "pwd");
        if (::unshare(CLONE_NEWNS) != 0 ||
            ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) != 0 ||
            ::mount("tmpfs", "/tmp", "tmpfs", MS_RDONLY, "size=1m") != 0)
            ::_exit(s_Skipped);
        for (char const * name : {"TMP", "TMPDIR", "TEMP", "TEMPDIR"})
            ::unsetenv(name);
        ::setenv("HOME", (elsewhere / "home").c_str(), 1);
        ::setenv("PWD", (elsewhere / "pwd").c_str(), 1);
        EXPECT_EQ(textOf(get_tmp_dir()), (elsewhere / "home") + "/");
        ::unsetenv("HOME");
        EXPECT_EQ(textOf(get_tmp_dir()), (elsewhere / "pwd") + "/");
        ::unsetenv("PWD");
        EXPECT_EQ(get_tmp_dir(), nullptr);
    });
    if (WIFEXITED(status) && WEXITSTATUS(status) == s_Skipped)
        GTEST_SKIP() << "an unwritable /tmp takes the right to mount";
    EXPECT_EQ(status, 0);
}

TEST_F(Files, AFileIsRemoved)
{
    std::ofstream(m_Directory / "file") << "x";
    EXPECT_EQ(unlink_utf8((m_Directory / "file").c_str()), 0);
    EXPECT_FALSE(std::filesystem::exists(m_Directory / "file"));
    EXPECT_EQ(unlink_utf8((m_Directory / "file").c_str()), -1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(unlink_utf8(nullptr), -1);
}

TEST_F(Files, APathKeepsItsForm)
{
    char path[] = "/a b/\\c:d";
    towin_path(path);
    EXPECT_STREQ(path, "/a b/\\c:d");
}

TEST_F(Files, TheProcessIdIsThatOfThisProcess)
{
    EXPECT_EQ(getCurrentProcessId(), ::getpid());
}

TEST_F(Files, ADocumentIsSavedForItsOwnerAlone)
{
    mode_t const old = ::umask(0777);
    int const size = save(m_Directory / "a.xml", smallDocument());
    ::umask(old);
    EXPECT_EQ(contentOf(m_Directory / "a.xml"), s_SmallText);
    EXPECT_EQ(size, static_cast<int>(std::strlen(s_SmallText)));
    EXPECT_EQ(modeOf(m_Directory / "a.xml"), unsigned(S_IFREG | 0600));
}

TEST_F(Files, AnOpenUmaskDoesNotOpenADocument)
{
    mode_t const old = ::umask(0);
    save(m_Directory / "a.xml", smallDocument());
    ::umask(old);
    EXPECT_EQ(modeOf(m_Directory / "a.xml"), unsigned(S_IFREG | 0600));
}

TEST_F(Files, AStaleFileIsReplacedAndNotWrittenInto)
{
    std::string const path = m_Directory / "a.xml";
    std::ofstream(path) << std::string(10000, 'x');
    ::chmod(path.c_str(), 0666);
    std::ifstream reader(path);
    EXPECT_GT(save(path, smallDocument()), 0);
    EXPECT_EQ(contentOf(path), s_SmallText);
    EXPECT_EQ(modeOf(path), unsigned(S_IFREG | 0600));
    std::string seen;
    reader >> seen;
    EXPECT_EQ(seen, std::string(10000, 'x'))
        << "whoever had the old file open does not see the new";
}

TEST_F(Files, ALinkIsReplacedAndNotFollowed)
{
    std::ofstream(m_Directory / "target") << "target";
    std::filesystem::create_symlink("target", m_Directory / "a.xml");
    EXPECT_GT(save(m_Directory / "a.xml", smallDocument()), 0);
    EXPECT_EQ(contentOf(m_Directory / "target"), "target");
    EXPECT_EQ(contentOf(m_Directory / "a.xml"), s_SmallText);
    EXPECT_EQ(modeOf(m_Directory / "a.xml"), unsigned(S_IFREG | 0600));
}

TEST_F(Files, ADanglingLinkMakesNoFileElsewhere)
{
    std::filesystem::create_symlink("target", m_Directory / "a.xml");
    EXPECT_GT(save(m_Directory / "a.xml", smallDocument()), 0);
    EXPECT_EQ(m_Directory.names(), std::set<std::string>{"a.xml"});
}

TEST_F(Files, AnythingElseUnderTheNameStays)
{
    std::filesystem::create_directory(m_Directory / "directory");
    ASSERT_EQ(::mkfifo((m_Directory / "pipe").c_str(), 0600), 0);
    for (char const * name : {"directory", "pipe"}) {
        EXPECT_EQ(save(m_Directory / name, smallDocument()), -1);
        EXPECT_EQ(errno, EEXIST);
    }
    EXPECT_EQ(m_Directory.names(), (std::set<std::string>{"directory", "pipe"}));
}

TEST_F(Files, ADocumentThatCannotBeSavedLeavesNothing)
{
    EXPECT_EQ(save(m_Directory / "missing/a.xml", smallDocument()), -1);
    EXPECT_EQ(errno, ENOENT);
    EXPECT_EQ(xmlSaveFormatFileEnc_utf8((m_Directory / "a.xml").c_str(), smallDocument().get(),
                                        "no such encoding", 1),
              -1);
    EXPECT_EQ(xmlSaveFormatFileEnc_utf8((m_Directory / "a.xml").c_str(), nullptr, "UTF-8", 1), -1);
    EXPECT_EQ(xmlSaveFormatFileEnc_utf8(nullptr, smallDocument().get(), "UTF-8", 1), -1);
    EXPECT_TRUE(m_Directory.names().empty());
}

TEST_F(Files, AFailedWriteLeavesNoFile)
{
    expectWellInFork([this] {
        // The signal of the limit would end the process before the write could fail.
        ::signal(SIGXFSZ, SIG_IGN);
        rlimit const limit = {1000, 1000};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        EXPECT_EQ(save(m_Directory / "a.xml", smallDocument(std::string(5000, 'x'))), -1);
        EXPECT_EQ(errno, EFBIG);
    });
    EXPECT_TRUE(m_Directory.names().empty());
}

TEST_F(Files, PrintingGoesToStandardOutput)
{
    testing::internal::CaptureStdout();
    EXPECT_EQ(vstudio_printf("%s %d%%\n", "a", 7), 5);
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "a 7%\n");
}

TEST_F(Files, DatabaseStorageIsOffUntilItIsSet)
{
    EXPECT_EQ(enableDatabaseStorage(), 0);
    setDatabaseStorage(1);
    EXPECT_NE(enableDatabaseStorage(), 0);
    setDatabaseStorage(0);
    EXPECT_EQ(enableDatabaseStorage(), 0);
}
