#include "support/child.h"
#include "support/leftovers.h"
#include "support/models.h"
#include "support/segments.h"

#include <keld-transl/process/exec_io.h>
#include <keld-transl/process/server.h>
#include <keld-transl/product/part.h>
#include <keld-transl/reporting/logger_policy.h>

#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>

namespace transl_tk {
namespace {

std::string contentOf(std::string const & path)
{
    std::ostringstream text;
    text << std::ifstream(path).rdbuf();
    return text.str();
}

class ServerTest : public testing::Test
{
protected:
    ~ServerTest() override { Server::echo_end(); }

    std::string directory() const { return m_Files.path().string() + "/"; }

    /// The one file in the test's directory.
    std::string onlyFile() const
    {
        auto const names = m_Files.names();
        return names.size() == 1 ? directory() + *names.begin() : std::string();
    }

    tests::LeftoverGuard m_Guard;
    tests::TemporaryDirectory m_Files;
};

TEST_F(ServerTest, IsSilentAtFirst)
{
    testing::internal::CaptureStdout();
    testing::internal::CaptureStderr();
    for (auto const type : {StreamPolicy::Error, StreamPolicy::Warning, StreamPolicy::Debug,
                            StreamPolicy::Plain, StreamPolicy::Report})
        Server::Stream()->post(type) << "swallowed" << std::endl;
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(Server::Stream()->getFilePath(), "");
}

TEST_F(ServerTest, StreamAndFileWithAPathShowsMessagesAndWritesTheReportAtItsEnd)
{
    testing::internal::CaptureStderr();
    Server::echo_start(StreamPolicy::StreamAndFile, directory());
    Server::Stream()->post(StreamPolicy::Error) << "shown" << std::endl;
    Server::Stream()->post(StreamPolicy::Report) << "|TAG: reported" << std::endl;
    EXPECT_EQ(Server::Stream()->getFilePath().rfind(directory() + "transl_tk_report_", 0), 0U);
    EXPECT_TRUE(m_Files.names().empty());
    Server::echo_end();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "    Error : shown\n");
    std::string const report = contentOf(onlyFile());
    EXPECT_NE(report.find("|TAG: reported\n"), std::string::npos);
    EXPECT_EQ(report.find("shown"), std::string::npos);
}

TEST_F(ServerTest, FileOnlyWithAPathShowsNothing)
{
    testing::internal::CaptureStderr();
    Server::echo_start(StreamPolicy::FileOnly, directory());
    Server::Stream()->post(StreamPolicy::Error) << "not shown" << std::endl;
    Server::echo_end();
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
    EXPECT_NE(onlyFile(), "");
}

TEST_F(ServerTest, WithoutAPathTheReportGoesToTheTemporaryDirectory)
{
    tests::ScopedEnvironment const temporary("TMP", directory());
    for (auto const mode : {StreamPolicy::StreamAndFile, StreamPolicy::FileOnly}) {
        Server::echo_start(mode, "");
        EXPECT_EQ(Server::Stream()->getFilePath().rfind(directory() + "transl_tk_report_", 0), 0U);
        Server::echo_end();
    }
    EXPECT_NE(onlyFile(), "");
}

TEST_F(ServerTest, StreamOnlyShowsMessagesAndKeepsTheReportInMemory)
{
    testing::internal::CaptureStdout();
    Server::echo_start(StreamPolicy::StreamOnly, "");
    Server::Stream()->post(StreamPolicy::Warning) << "shown" << std::endl;
    Server::Stream()->post(StreamPolicy::Report) << "kept" << std::endl;
    EXPECT_EQ(Server::Stream()->getText(), "kept\n");
    EXPECT_EQ(Server::Stream()->getFilePath(), "");
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "    Warning : shown\n");
}

TEST_F(ServerTest, SilentIsThePermanentStream)
{
    StreamPolicy * const permanent = Server::Stream();
    Server::echo_start(StreamPolicy::StreamOnly, "");
    EXPECT_NE(Server::Stream(), permanent);
    Server::echo_start(StreamPolicy::Silent, "");
    EXPECT_EQ(Server::Stream(), permanent);
}

TEST_F(ServerTest, EchoEndMayRunTwice)
{
    StreamPolicy * const permanent = Server::Stream();
    Server::echo_start(StreamPolicy::FileOnly, directory());
    Server::echo_end();
    Server::echo_end();
    EXPECT_EQ(Server::Stream(), permanent);
}

TEST_F(ServerTest, AModeThatTakesNoPathLeavesTheSilentStream)
{
    StreamPolicy * const permanent = Server::Stream();
    for (auto const mode : {StreamPolicy::StreamOnly, StreamPolicy::Silent}) {
        Server::echo_start(StreamPolicy::FileOnly, directory());
        Server::echo_start(mode, directory());
        EXPECT_EQ(Server::Stream(), permanent);
    }
}

/// The options of a translator's run.
class GeneratorTest : public ServerTest
{
protected:
    void add(char const * name, char const * text)
    {
        m_Options->addOption(IOption::create(name, IValue::create(text), ""));
    }
    bool reports()
    {
        EXPECT_TRUE(Server::SetDumpFileGenerator(m_Options.get()));
        return !Server::Stream()->getFilePath().empty();
    }

    /// What a translator with a dump directory prints that crashes after `before`.
    std::string outputOfACrash(std::function<void()> const & before)
    {
        tests::ScopedEnvironment const unwanted("TRANSL_REPORT_FILE", std::nullopt);
        tests::TemporaryDirectory const output;
        add("dump_directory", directory().c_str());
        tests::Child translator([&] {
            int const file =
                ::open((output / "stdout").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
            ::dup2(file, STDOUT_FILENO);
            Server::echo_start(StreamPolicy::StreamOnly, "");
            Server::SetDumpFileGenerator(m_Options.get());
            before();
            return std::raise(SIGSEGV);
        });
        EXPECT_EQ(translator.wait(), -SIGSEGV);
        EXPECT_NE(onlyFile(), "");
        return contentOf(output / "stdout");
    }
    std::string dumpLine() { return "\nVORN wrote a dump file (" + onlyFile() + ") !!!\n"; }

    std::unique_ptr<IExecIO, void (*)(IExecIO *)> m_Options{IExecIO::create(), &IExecIO::destruct};
};

TEST_F(GeneratorTest, StartsTheReportWhereTheOptionSays)
{
    tests::ScopedEnvironment const wanted("TRANSL_REPORT_FILE", "");
    add("full_reprot", directory().c_str());
    EXPECT_TRUE(reports());
    EXPECT_EQ(Server::Stream()->getFilePath().rfind(directory(), 0), 0U);
}

TEST_F(GeneratorTest, StartsNoReportUnlessTheVariableIsSet)
{
    tests::ScopedEnvironment const unwanted("TRANSL_REPORT_FILE", std::nullopt);
    add("full_reprot", directory().c_str());
    EXPECT_FALSE(reports());
}

TEST_F(GeneratorTest, StartsNoReportWithoutTheOptionOrWithAnEmptyOne)
{
    tests::ScopedEnvironment const wanted("TRANSL_REPORT_FILE", "1");
    EXPECT_FALSE(reports());
    add("full_report", directory().c_str());
    EXPECT_FALSE(reports());
    add("full_reprot", "");
    EXPECT_FALSE(reports());
    // The first option of the name decides.
    add("full_reprot", directory().c_str());
    EXPECT_FALSE(reports());
}

TEST_F(GeneratorTest, AnOptionWithoutExactlyOneTextCountsAsEmpty)
{
    tests::ScopedEnvironment const wanted("TRANSL_REPORT_FILE", "1");
    IOption * const two = IOption::create("full_reprot", "");
    two->addValue(IValue::create(directory().c_str()));
    two->addValue(IValue::create(directory().c_str()));
    m_Options->addOption(two);
    EXPECT_FALSE(reports());
    m_Options->clear();
    m_Options->addOption(IOption::create("full_reprot", IValue::create(7), ""));
    EXPECT_FALSE(reports());
}

TEST_F(GeneratorTest, ACrashLeavesADumpAndSaysWhereInTheStream)
{
    std::string const output = outputOfACrash([] {});
    EXPECT_EQ(output, dumpLine());
}

TEST_F(GeneratorTest, ACrashNamesTheComponentThatWasBeingRead)
{
    std::string const output = outputOfACrash([] {
        Pool::construct("model");
        Pool::getInstance()->logger()->setProcessingComponent(Part::create(0, "hinge"));
    });
    EXPECT_EQ(output, "\nProcess failed while reading component: hinge\n" + dumpLine());
}

TEST_F(GeneratorTest, ACrashNamesNoComponentThatIsGone)
{
    std::string const output = outputOfACrash([] {
        Pool::construct("model");
        Part * const part = Part::create(0, "hinge");
        Pool::getInstance()->logger()->setProcessingComponent(part);
        Hierarchy::destruct(part);
    });
    EXPECT_EQ(output, dumpLine());
}

TEST_F(GeneratorTest, ADirectoryLongerThanItsBlockIsCut)
{
    std::string deep = m_Files.path().string();
    while (deep.size() < 1023 - 100) {
        deep += "/" + std::string(99, 'd');
        std::filesystem::create_directory(deep);
    }
    // The block holds 1023 characters: a directory of that length, whatever stands behind it.
    deep += "/" + std::string(1023 - deep.size() - 1, 'e');
    std::filesystem::create_directory(deep);
    add("dump_directory", (deep + "fffff").c_str());
    tests::Child translator([&] {
        Server::SetDumpFileGenerator(m_Options.get());
        return std::raise(SIGSEGV);
    });
    EXPECT_EQ(translator.wait(), -SIGSEGV);
    EXPECT_FALSE(std::filesystem::is_empty(deep));
}

TEST_F(ServerTest, QuitExitWritesTheReportAndReleasesTheSegment)
{
    std::string const name = tests::segmentName();
    tests::Child translator([&]() -> int {
        Pool::construct("model");
        Server::echo_start(StreamPolicy::FileOnly, directory());
        Server::Stream()->post(StreamPolicy::Report) << "|TAG: last words" << std::endl;
        Server::writeSharedMem(name);
        Server::quit_exit(17);
    });
    EXPECT_EQ(translator.wait(), 17);
    EXPECT_NE(contentOf(onlyFile()).find("|TAG: last words\n"), std::string::npos);
    EXPECT_TRUE(tests::segmentBytes(name).empty());
}

TEST_F(ServerTest, ErrorExitReleasesTheSegmentHoweverOftenItIsMapped)
{
    std::string const name = tests::segmentName();
    tests::Child translator([&]() -> int {
        Pool::construct("model");
        Server::writeSharedMem(name);
        Server::error_exit(3);
    });
    EXPECT_EQ(translator.wait(), 3);
    EXPECT_FALSE(tests::sharedMemoryNames().count(name) != 0);
    EXPECT_TRUE(tests::segmentBytes(name).empty());
}

TEST_F(ServerTest, ReleasingWithoutASegmentDoesNothing)
{
    Server::unmapSharedMemory(false);
    Server::unmapSharedMemory(true);
    EXPECT_EQ(Server::exchangeFailure(), "");
}

} // namespace
} // namespace transl_tk
