#include "reporting/stream_implementation.h"
#include "support/captured_stream.h"
#include "support/leftovers.h"
#include "support/slots.h"

#include <keld-common/files.h>
#include <keld-transl/process/server.h>

#include <algorithm>
#include <ctime>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <iterator>
#include <locale>
#include <memory>
#include <type_traits>
#include <vector>

using namespace transl_tk;
using tests::CapturedStream;
using tests::ScopedEnvironment;
using tests::TemporaryDirectory;

namespace {

// The mode of access that fails, for a directory that loses its rights between two questions.
std::string failingMode;

} // namespace

// Stands before the platform library's function of this name.
extern "C" int iaccess(char const * path, char const * mode)
{
    static auto const platform =
        reinterpret_cast<int (*)(char const *, char const *)>(dlsym(RTLD_NEXT, "iaccess"));
    return failingMode == mode ? -1 : platform(path, mode);
}

namespace {

using ConsoleAndFile = StreamImplementation<StreamOn, FileOn>;
using Console = StreamImplementation<StreamOn, FileOff>;
using File = StreamImplementation<StreamOff, FileOn>;
using Nothing = StreamImplementation<StreamOff, FileOff>;

std::string const rule(69, '=');

std::string contentOf(std::string const & path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// The variables of the head are set to values of their own, but for one that is not set.
class ReportFile : public testing::Test
{
protected:
    std::string const m_Head = rule +
                               "\n"
                               " UGII_BASE_DIR   /base\n"
                               " JT_OPEN_PATH    /jt\n"
                               " CT_LIB_PATH     Not Found\n"
                               " VORN_HOME       \n"
                               " VORN_EXEC_DIR   /exec dir\n"
                               " PWD             /working\n"
                               " PATH            /usr/bin:/bin\n" +
                               rule + "\n\n";
    TemporaryDirectory m_Directory;
    std::string const m_Prefix = m_Directory / "";

private:
    ScopedEnvironment m_Base{"UGII_BASE_DIR", "/base"};
    ScopedEnvironment m_Jt{"JT_OPEN_PATH", "/jt"};
    ScopedEnvironment m_Ct{"CT_LIB_PATH", std::nullopt};
    ScopedEnvironment m_Home{"VORN_HOME", ""};
    ScopedEnvironment m_Exec{"VORN_EXEC_DIR", "/exec dir"};
    ScopedEnvironment m_Pwd{"PWD", "/working"};
    ScopedEnvironment m_Path{"PATH", "/usr/bin:/bin"};
};

/// Expects the path that `make` gives its object to name a second in which it ran.
template <class Make> void expectReportPath(std::string const & directory, Make make)
{
    auto const before = std::time(nullptr);
    auto const policy = make();
    auto const after = std::time(nullptr);
    std::vector<std::string> candidates;
    for (auto second = before; second <= after; ++second)
        candidates.push_back(directory + "transl_tk_report_" + std::to_string(second) + ".log");
    EXPECT_NE(std::find(candidates.begin(), candidates.end(), policy->getFilePath()),
              candidates.end())
        << policy->getFilePath();
}

} // namespace

TEST(StreamPolicy, ConsoleMessagesHaveThePrefixOfTheirType)
{
    CapturedStream const output(std::cout);
    CapturedStream const errors(std::cerr);
    Console policy;
    policy.post(StreamPolicy::Error) << "a" << std::endl;
    policy.post(StreamPolicy::Warning) << "b" << std::endl;
    policy.post(StreamPolicy::Debug) << "c" << std::endl;
    policy.post(StreamPolicy::Plain) << "d" << std::endl;
    EXPECT_EQ(errors.text(), "    Error : a\n");
    EXPECT_EQ(output.text(), "    Warning : b\nDEBUG: c\nd\n");
}

TEST(StreamPolicy, PostWritesThePrefixAtOnce)
{
    CapturedStream const output(std::cout);
    CapturedStream const errors(std::cerr);
    Console policy;
    EXPECT_EQ(&policy.post(StreamPolicy::Error), &std::cerr);
    EXPECT_EQ(&policy.post(StreamPolicy::Warning), &std::cout);
    EXPECT_EQ(errors.text(), "    Error : ");
    EXPECT_EQ(output.text(), "    Warning : ");
}

TEST(StreamPolicy, ReportLinesStayInMemoryAndOffTheConsole)
{
    CapturedStream const output(std::cout);
    CapturedStream const errors(std::cerr);
    Console policy;
    policy.post(StreamPolicy::Report) << "|TAG: one" << std::endl;
    policy.post(StreamPolicy::Report) << "|TAG: two" << std::endl;
    EXPECT_EQ(policy.getText(), "|TAG: one\n|TAG: two\n");
    EXPECT_EQ(policy.getFilePath(), "");
    EXPECT_EQ(output.text() + errors.text(), "");
}

TEST(StreamPolicy, MessagesDoNotReachTheReport)
{
    CapturedStream const output(std::cout);
    CapturedStream const errors(std::cerr);
    Console policy;
    for (auto type :
         {StreamPolicy::Error, StreamPolicy::Warning, StreamPolicy::Debug, StreamPolicy::Plain})
        policy.post(type) << "message" << std::endl;
    EXPECT_EQ(policy.getText(), "");
}

TEST(StreamPolicy, SilentOneLosesMessagesAndKeepsTheReport)
{
    CapturedStream const output(std::cout);
    CapturedStream const errors(std::cerr);
    Nothing policy;
    for (auto type :
         {StreamPolicy::Error, StreamPolicy::Warning, StreamPolicy::Debug, StreamPolicy::Plain}) {
        EXPECT_TRUE(policy.post(type).bad());
        policy.post(type) << "message" << std::endl;
        EXPECT_EQ(&policy.post(type), &policy.post(StreamPolicy::Error));
    }
    policy.post(StreamPolicy::Report) << "line" << std::endl;
    EXPECT_EQ(output.text() + errors.text(), "");
    EXPECT_EQ(policy.getText(), "line\n");
    EXPECT_EQ(policy.getFilePath(), "");
}

TEST(StreamPolicy, ANumberThatIsNoTypeHasNoStream)
{
    CapturedStream const output(std::cout);
    CapturedStream const errors(std::cerr);
    Console policy;
    for (int number : {-1, 5, 1000}) {
        auto & stream = policy.post(StreamPolicy::Type(number));
        stream << "message" << std::endl;
        EXPECT_TRUE(stream.bad());
    }
    EXPECT_EQ(output.text() + errors.text() + policy.getText(), "");
}

TEST(StreamPolicy, ReportIsTheSameUnderAnyGlobalLocale)
{
    struct Grouping : std::numpunct<char>
    {
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
        char do_decimal_point() const override { return ','; }
    };
    auto const old = std::locale::global(std::locale(std::locale::classic(), new Grouping));
    {
        Nothing memory;
        File file("/nonexistent/");
        std::locale::global(old);
        memory.post(StreamPolicy::Report) << 1234567 << ' ' << 1.5;
        file.post(StreamPolicy::Report) << 1234567 << ' ' << 1.5;
        EXPECT_EQ(memory.getText(), "1234567 1.5");
        EXPECT_TRUE(file.getText().ends_with("1234567 1.5"));
    }
}

TEST_F(ReportFile, HeadShowsTheEnvironment)
{
    File policy(m_Prefix);
    EXPECT_EQ(policy.getText(), m_Head);
}

TEST_F(ReportFile, IsNamedAfterDirectoryAndSecond)
{
    expectReportPath("C:/t/", [] { return std::make_unique<File>("C:/t/"); });
    expectReportPath("C:/t/", [] { return std::make_unique<ConsoleAndFile>("C:/t/"); });
}

TEST_F(ReportFile, NameGetsNoSeparator)
{
    expectReportPath("C:/t", [] { return std::make_unique<File>("C:/t"); });
    std::string const below = m_Directory / "below";
    std::filesystem::create_directory(below);
    ScopedEnvironment const temporary("TMP", below);
    expectReportPath(below, [] { return std::make_unique<File>(); });
}

TEST_F(ReportFile, IsWrittenWhenThePolicyGoes)
{
    std::string path;
    {
        File policy(m_Prefix);
        path = policy.getFilePath();
        policy.post(StreamPolicy::Report) << "|TAG: one" << std::endl;
        policy.post(StreamPolicy::Error) << "message" << std::endl;
        policy.post(StreamPolicy::Report) << "|TAG: two" << std::endl;
        EXPECT_TRUE(m_Directory.names().empty());
        EXPECT_EQ(policy.getText(), m_Head + "|TAG: one\n|TAG: two\n");
    }
    EXPECT_EQ(contentOf(path), m_Head + "|TAG: one\n|TAG: two\n");
    EXPECT_EQ(m_Directory.names().size(), 1U);
}

TEST_F(ReportFile, ReplacesAFileOfItsName)
{
    std::string path;
    {
        File policy(m_Prefix);
        path = policy.getFilePath();
        std::ofstream(path) << std::string(10000, 'x');
    }
    EXPECT_EQ(contentOf(path), m_Head);
}

TEST_F(ReportFile, DoesNotFollowALinkOfItsName)
{
    std::string const target = m_Directory / "target";
    std::ofstream(target) << "kept";
    {
        File policy(m_Prefix);
        std::filesystem::create_symlink(target, policy.getFilePath());
    }
    EXPECT_EQ(contentOf(target), "kept");
}

TEST_F(ReportFile, ThatCannotBeWrittenIsLostSilently)
{
    CapturedStream const output(std::cout);
    CapturedStream const errors(std::cerr);
    {
        ConsoleAndFile policy("/nonexistent/directory/");
        EXPECT_EQ(policy.getText(), m_Head);
    }
    EXPECT_EQ(output.text() + errors.text(), "");
}

TEST_F(ReportFile, WithConsoleKeepsTheTwoApart)
{
    CapturedStream const output(std::cout);
    CapturedStream const errors(std::cerr);
    ConsoleAndFile policy(m_Prefix);
    policy.post(StreamPolicy::Report) << "line" << std::endl;
    EXPECT_EQ(output.text() + errors.text(), "");
    policy.post(StreamPolicy::Error) << "message" << std::endl;
    policy.post(StreamPolicy::Plain) << "message" << std::endl;
    EXPECT_EQ(errors.text(), "    Error : message\n");
    EXPECT_EQ(output.text(), "message\n");
    EXPECT_EQ(policy.getText(), m_Head + "line\n");
}

TEST_F(ReportFile, WithoutDirectoryGoesToATemporaryOne)
{
    ScopedEnvironment const temporary("TMP", m_Prefix);
    std::string path;
    {
        ConsoleAndFile policy;
        path = policy.getFilePath();
        EXPECT_EQ(policy.getText(), m_Head);
        EXPECT_TRUE(path.starts_with(m_Prefix + "transl_tk_report_")) << path;
    }
    EXPECT_EQ(contentOf(path), m_Head);
}

TEST_F(ReportFile, WithoutAnyTemporaryDirectoryIsNoneAndHasNoHead)
{
    std::vector<std::unique_ptr<ScopedEnvironment>> unusable;
    for (char const * variable : {"TMP", "TMPDIR", "TEMP", "TEMPDIR", "HOME", "PWD"})
        unusable.push_back(std::make_unique<ScopedEnvironment>(variable, "/nonexistent"));
    CapturedStream const output(std::cout);
    CapturedStream const errors(std::cerr);
    ConsoleAndFile policy;
    EXPECT_EQ(policy.getFilePath(), "");
    EXPECT_EQ(policy.getText(), "");
    policy.post(StreamPolicy::Report) << "line" << std::endl;
    EXPECT_EQ(policy.getText(), "line\n");
    EXPECT_EQ(output.text() + errors.text(), "");
}

TEST_F(ReportFile, InATemporaryDirectoryThatLostItsRightsIsNoneAndSaysSo)
{
    ScopedEnvironment const temporary("TMP", m_Prefix);
    CapturedStream const output(std::cout);
    CapturedStream const errors(std::cerr);
    failingMode = "wr";
    {
        File policy;
        EXPECT_EQ(policy.getFilePath(), "");
        EXPECT_EQ(policy.getText(), "");
    }
    failingMode.clear();
    EXPECT_EQ(errors.text(), "[TRANSL_REPORT_FILE] Cannot access directory \"" + m_Prefix + "\"\n");
    EXPECT_EQ(output.text(), "");
    EXPECT_TRUE(m_Directory.names().empty());
}

TEST(StreamPolicy, PartsAreCopiedAndMovedAsTold)
{
    static_assert(std::is_move_constructible_v<FileOff> && std::is_move_assignable_v<FileOff>);
    static_assert(!std::is_copy_constructible_v<FileOff> && !std::is_copy_assignable_v<FileOff>);
    static_assert(std::is_base_of_v<std::ostringstream, FileOff>);
    static_assert(std::is_base_of_v<std::ostringstream, FileOn>);
    static_assert(!std::is_constructible_v<Console, std::string>);
    static_assert(!std::is_polymorphic_v<StreamOn> && !std::is_polymorphic_v<StreamOff>);

    StreamOff original;
    StreamOff copy(original);
    EXPECT_EQ(&copy.post(StreamPolicy::Error), &original.post(StreamPolicy::Error));

    FileOff gathered;
    gathered << "line";
    FileOff const moved(std::move(gathered));
    EXPECT_EQ(moved.getText(), "line");
    EXPECT_EQ(moved.getFilePath(), "");
}

TEST(StreamPolicy, TypesAndModesHaveTheirNumbers)
{
    EXPECT_EQ(StreamPolicy::Type::Error, 0);
    EXPECT_EQ(StreamPolicy::Type::Warning, 1);
    EXPECT_EQ(StreamPolicy::Type::Debug, 2);
    EXPECT_EQ(StreamPolicy::Type::Plain, 3);
    EXPECT_EQ(StreamPolicy::Type::Report, 4);
    EXPECT_EQ(StreamPolicy::Mode::StreamAndFile, 0);
    EXPECT_EQ(StreamPolicy::Mode::StreamOnly, 1);
    EXPECT_EQ(StreamPolicy::Mode::FileOnly, 2);
    EXPECT_EQ(StreamPolicy::Mode::Silent, 3);
}

TEST(StreamPolicy, OperationsStandInTableOrderBeforeTheDestructor)
{
    using tests::slotOf;
    struct Derived : StreamPolicy
    {
        virtual void behind() {}
    };
    EXPECT_EQ(slotOf(&StreamPolicy::post), 0U);
    EXPECT_EQ(slotOf(&StreamPolicy::getText), 1U);
    EXPECT_EQ(slotOf(&StreamPolicy::getFilePath), 2U);
    EXPECT_EQ(slotOf(&Derived::behind), 5U);
}
