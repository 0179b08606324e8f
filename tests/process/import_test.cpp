#include "process/scripted_host.h"
#include "support/leftovers.h"
#include "support/models.h"
#include "support/segments.h"

#include <keld-transl/process/server.h>

#include <fstream>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sstream>

namespace transl_tk {
namespace {

using testing::ElementsAre;
using tests::ImportHost;

/// A whole conversation of a translator that announces a model of two points.
std::string const SoundImport =
    "options; read; expect-start f ; frame 123; read; expect-start i ; frame 121 i32 40; "
    "frame 127 i32 6; model 2; frame 120 i64 size; read; expect x u; frame 126; "
    "read; expect q; frame 126";

class Import : public testing::Test
{
protected:
    Import() { m_Host.m_Segment = tests::segmentName(); }
    ~Import() override
    {
        while (Pool::hasInstance())
            Pool::destruct();
    }

    bool read(std::string const & script, std::string const & file = "part.xyz")
    {
        m_Host.m_Command = tests::scriptedCommand(script);
        bool const result = m_Host.read(file, 3);
        EXPECT_FALSE(Server::isOpen());
        EXPECT_EQ(Client::m_RefCounter, 0);
        return result;
    }

    /// The scripted translator's own verdict is its exit code, which the channel does not pass on;
    /// a script that reaches its end leaves this file.
    std::string endMark() const { return "; touch " + (m_Files / "ended"); }
    bool reachedEnd() const { return m_Files.names().count("ended") != 0; }

    tests::ScopedEnvironment m_Grace{"KELD_GRACE_MS", "300"};
    tests::LeftoverGuard m_Guard;
    tests::TemporaryDirectory m_Files;
    ImportHost m_Host;
};

TEST_F(Import, BringsTheModelIntoASubPoolNamedAfterTheFile)
{
    std::map<int, tests::Coordinates> arrived;
    m_Host.m_TransferModel = [&] {
        arrived = tests::points();
        EXPECT_EQ(Pool::getInstance()->getCurrent(), "part.xyz");
    };
    EXPECT_TRUE(read(SoundImport + endMark()));
    EXPECT_TRUE(reachedEnd());
    EXPECT_EQ(m_Host.serverExitStatus(), 8U);
    EXPECT_EQ(arrived, (std::map<int, tests::Coordinates>{{1, {1, 2, 3}}, {2, {2, 4, 6}}}));
    EXPECT_EQ(Server::ServerType(), 3U);
}

TEST_F(Import, AsksTheHostInThisOrder)
{
    read(SoundImport);
    EXPECT_THAT(m_Host.m_Notes,
                ElementsAre("progress 0", "fill options", "progress 1", "progress 10",
                            "confirm import", "import started", "progress 40", "status 6",
                            "transfer model", "progress 100"));
}

TEST_F(Import, OptionsReachTheTranslatorAndGoWithTheRun)
{
    m_Host.m_FillOptions = [](IExecIO & options) {
        options.addOption(IOption::create("depth", IValue::create(4), "how deep"));
        options.addOption(IOption::create("name", IValue::create("a<b & 'c'"), ""));
    };
    EXPECT_TRUE(read("options; expect-option depth=4; expect-option name=a<b & 'c'; read; "
                     "frame 122 i32 9 i64 0; frame 126" +
                     endMark()));
    EXPECT_TRUE(reachedEnd());
    EXPECT_EQ(m_Host.getExecIO()->size(), 0);
}

TEST_F(Import, LibraryPathReachesTheTranslatorAlone)
{
    tests::ScopedEnvironment const library("LD_LIBRARY_PATH", std::nullopt);
    m_Host.m_LibraryPath = "/some/library";
    std::string const file = m_Files / "environment";
    std::string const script = m_Files / "translator.sh";
    std::ofstream(script) << "#!/bin/sh\nprintf %s \"$LD_LIBRARY_PATH\" > '" << file << "'\n";
    std::filesystem::permissions(script, std::filesystem::perms::owner_all);
    m_Host.m_Command = script;
    m_Host.read("part.xyz", 1);
    std::ostringstream text;
    text << std::ifstream(file).rdbuf();
    EXPECT_EQ(text.str().substr(0, 13), "/some/library");
    EXPECT_EQ(std::getenv("LD_LIBRARY_PATH"), nullptr);
}

TEST_F(Import, FirstCommandIsFilledUpToOneBlock)
{
    // The block comes in one read, the name undoubled, and filled up behind its line.
    EXPECT_TRUE(read("read; expect f C:/my models/a b.stp; frame 122 i32 9 i64 0; read; "
                     "expect x u; frame 126; read; expect q; frame 126" +
                         endMark(),
                     "C:/my models/a b.stp"));
    EXPECT_TRUE(reachedEnd());
}

TEST_F(Import, PercentSignsOfTheNameReachTheTranslatorUnchanged)
{
    EXPECT_TRUE(read("read; expect f a%b%%c%s%n; frame 122 i32 9 i64 0; frame 126" + endMark(),
                     "a%b%%c%s%n"));
    EXPECT_TRUE(reachedEnd());
}

TEST_F(Import, ANameThatFillsTheBlockIsSentWhole)
{
    std::string const name(4093, 'n');
    EXPECT_TRUE(
        read("read; expect f " + name + "; frame 122 i32 9 i64 0; frame 126" + endMark(), name));
    EXPECT_TRUE(reachedEnd());
}

TEST_F(Import, ALongerNameIsCutToTheBlock)
{
    std::string const name(5000, 'n');
    EXPECT_TRUE(read("read; expect f " + name.substr(0, 4094) +
                         "; frame 122 i32 9 i64 0; frame 126" + endMark(),
                     name));
    EXPECT_TRUE(reachedEnd());
}

TEST_F(Import, AnEmptyNameSendsNoCommand)
{
    EXPECT_TRUE(read("read; expect q; frame 126" + endMark(), ""));
    EXPECT_TRUE(reachedEnd());
    EXPECT_THAT(m_Host.m_Notes, ElementsAre("progress 0", "fill options", "progress 1",
                                            "transfer model", "progress 100"));
}

TEST_F(Import, ARefusalIsACancelledRun)
{
    m_Host.m_Confirms = false;
    EXPECT_TRUE(
        read("read; frame 123; read; expect x ; frame 126; read; expect q; frame 126" + endMark()));
    EXPECT_TRUE(reachedEnd());
    EXPECT_EQ(m_Host.serverExitStatus(), 9U);
    EXPECT_EQ(m_Host.serverExitStatusMsg(), "Server cancelled");
    EXPECT_FALSE(Pool::hasInstance());
    EXPECT_EQ(m_Host.m_Notes.back(), "confirm import");
}

TEST_F(Import, AnEmptyModelMakesNoPoolAndIsAcknowledged)
{
    EXPECT_TRUE(read("read; frame 123; read; frame 120 i64 0; read; expect x u; frame 126; read; "
                     "frame 126" +
                     endMark()));
    EXPECT_TRUE(reachedEnd());
    EXPECT_FALSE(Pool::hasInstance());
    EXPECT_EQ(m_Host.serverExitStatus(), 8U);
}

TEST_F(Import, AnEmptySegmentNameReadsNothingAndMakesThePool)
{
    m_Host.m_Segment.clear();
    EXPECT_TRUE(read("read; frame 123; read; expect i ; frame 120 i64 136; read; expect x u; "
                     "frame 126; read; frame 126" +
                     endMark()));
    EXPECT_TRUE(reachedEnd());
    EXPECT_TRUE(Pool::hasInstance());
    EXPECT_TRUE(tests::points().empty());
}

struct ExitCase
{
    int status;
    bool succeeds;
    bool readsModel;
};

class ImportExit : public Import, public testing::WithParamInterface<ExitCase>
{};

TEST_P(ImportExit, ReadsTheModelThatSuchAStatusLeaves)
{
    std::string const status = std::to_string(GetParam().status);
    EXPECT_EQ(read("read; frame 123; read; model 2; frame 122 i32 " + status +
                   " i64 size; read; expect x u; frame 126; read; frame 126" + endMark()),
              GetParam().succeeds);
    EXPECT_TRUE(reachedEnd());
    EXPECT_EQ(m_Host.serverExitStatus(), static_cast<unsigned>(GetParam().status));
    EXPECT_EQ(Pool::hasInstance(), GetParam().readsModel);
    if (GetParam().readsModel) {
        EXPECT_EQ(tests::points().size(), 2U);
    }
}

INSTANTIATE_TEST_SUITE_P(
    Statuses, ImportExit,
    testing::Values(ExitCase{0, false, true}, ExitCase{1, false, true}, ExitCase{2, false, true},
                    ExitCase{3, false, true}, ExitCase{4, false, true}, ExitCase{5, false, false},
                    ExitCase{6, false, false}, ExitCase{7, false, true}, ExitCase{8, true, false},
                    ExitCase{9, true, false}, ExitCase{10, false, true}, ExitCase{77, false, true}),
    [](auto const & status) { return "Status" + std::to_string(status.param.status); });

TEST_F(Import, ExitWithStatusFiveCarriesNoSize)
{
    EXPECT_FALSE(read("read; frame 123; read; frame 122 i32 5; read; expect x u; frame 126; read; "
                      "frame 126" +
                      endMark()));
    EXPECT_TRUE(reachedEnd());
    EXPECT_EQ(m_Host.serverExitStatus(), 5U);
}

TEST_F(Import, AModelThatCannotBeReadIsAFailedRun)
{
    EXPECT_FALSE(read("read; frame 123; read; create-segment 50; frame 120 i64 50; read; "
                      "expect x u; frame 126; read; frame 126" +
                      endMark()));
    EXPECT_TRUE(reachedEnd());
    EXPECT_EQ(m_Host.serverExitStatus(), 0U);
    EXPECT_NE(Server::exchangeFailure().find("The model stream is not sound"), std::string::npos);
}

TEST_F(Import, ASegmentThatWasNeverMadeIsAFailedRun)
{
    EXPECT_FALSE(
        read("read; frame 123; read; frame 120 i64 136; read; frame 126; read; frame 126"));
    EXPECT_EQ(m_Host.serverExitStatus(), 0U);
}

TEST_F(Import, ASizeLargerThanTheSegmentIsAFailedRun)
{
    EXPECT_FALSE(read("read; frame 123; read; create-segment 108; frame 120 i64 5000000; read; "
                      "frame 126; read; frame 126"));
    EXPECT_EQ(m_Host.serverExitStatus(), 0U);
    EXPECT_NE(Server::exchangeFailure().find("holds 108 bytes where 5000000 were announced"),
              std::string::npos);
}

TEST_F(Import, FramesTooShortForTheirValuesAreNotReadBeyondTheirEnd)
{
    EXPECT_FALSE(read("read; frame 123; read; bytes 040079010203; bytes 01007f; "
                      "bytes 050078aabbccdd; read; expect x u; frame 126; read; frame 126"));
    EXPECT_EQ(m_Host.serverExitStatus(), 0U);
}

TEST_F(Import, AShortExitFrameIsAFailedRun)
{
    EXPECT_FALSE(read("read; frame 123; read; bytes 03007a0800; read; frame 126; read; frame 126"));
    EXPECT_EQ(m_Host.serverExitStatus(), 0U);
}

TEST_F(Import, UnknownKeysAreIgnored)
{
    EXPECT_TRUE(read("read; frame 7 i32 1; frame 125; frame 123; frame 119; read; model 1; "
                     "frame 120 i64 size; read; frame 126; read; frame 126"));
    EXPECT_EQ(m_Host.serverExitStatus(), 8U);
}

struct Death
{
    char const * name;
    char const * script;
};

class ImportDeath : public Import, public testing::WithParamInterface<Death>
{};

TEST_P(ImportDeath, LeavesNothingBehindAndTheStatusAsItWas)
{
    // The library does not tell a death from an end: the status that stands is the one that says
    // completed, and the host's own handlers know that no answer came.
    EXPECT_TRUE(read(GetParam().script));
    EXPECT_EQ(m_Host.serverExitStatus(), 8U);
}

INSTANTIATE_TEST_SUITE_P(
    Stages, ImportDeath,
    testing::Values(
        Death{"AtStart", "exit 1"}, Death{"BeforeOptionsByKill", "die 9"},
        Death{"AfterOptions", "options; die 9"}, Death{"BeforeAcceptance", "options; read; die 11"},
        Death{"AfterAcceptance", "read; frame 123; die 9"},
        Death{"AfterTheImportCommand", "read; frame 123; read; die 6"},
        Death{"InTheMiddleOfTheModel", "read; frame 123; read; create-segment 100000; die 9"},
        Death{"AfterTheModel", "read; frame 123; read; model 3; die 9"},
        Death{"AfterSuccess", "read; frame 123; read; model 3; frame 120 i64 size; read; die 9"},
        Death{"ClosingItsPipeAndLiving", "read; frame 123; close frames; forever"},
        Death{"NeverAnsweringQuit", "read; frame 123; read; frame 126; forever"},
        Death{"IgnoringTermination", "ignore 15; read; frame 123; read; frame 126; forever"}),
    [](auto const & death) { return death.param.name; });

TEST_F(Import, AMissingTranslatorFallsThrough)
{
    m_Host.m_Command = "/no/such/translator";
    EXPECT_TRUE(m_Host.read("part.xyz", 1));
    EXPECT_EQ(m_Host.serverExitStatus(), 8U);
    EXPECT_EQ(Client::m_RefCounter, 0);
    EXPECT_FALSE(Server::isOpen());
    EXPECT_THAT(m_Host.m_Notes, ElementsAre("progress 0", "progress 1", "progress 10",
                                            "transfer model", "progress 100"));
}

TEST_F(Import, AnEmptyCommandStartsNothing)
{
    m_Host.m_Command.clear();
    Server::echo_start(StreamPolicy::StreamOnly, "");
    EXPECT_TRUE(m_Host.read("part.xyz", 1));
    EXPECT_EQ(Server::Stream()->getText(),
              "|COMMAND_LOG: Command to launch translator executable: \n");
    Server::echo_end();
}

TEST_F(Import, WithoutAnOptionsFileNothingStartsAndTheStatusIsEleven)
{
    tests::ScopedEnvironment const directory("TMP", m_Files / "locked");
    std::filesystem::create_directory(m_Files / "locked");
    m_Host.m_FillOptions = [](IExecIO & options) {
        options.addOption(IOption::create("\x01", "a name that XML cannot hold"));
    };
    Server::echo_start(StreamPolicy::StreamOnly, "");
    testing::internal::CaptureStderr();
    EXPECT_FALSE(read("touch " + (m_Files / "started")));
    EXPECT_NE(testing::internal::GetCapturedStderr(), "");
    EXPECT_EQ(m_Host.serverExitStatus(), 11U);
    EXPECT_EQ(m_Host.serverExitStatusMsg(), "Unexpected error!");
    EXPECT_NE(Server::Stream()->getText().find(
                  "|OPTIONS_LOG: Could not write options xml file\n|COMMAND_LOG: "),
              std::string::npos);
    Server::echo_end();
    EXPECT_EQ(m_Files.names().count("started"), 0U);
    EXPECT_THAT(m_Host.m_Notes, ElementsAre("progress 0", "fill options"));
}

TEST_F(Import, TheCommandIsLogged)
{
    Server::echo_start(StreamPolicy::StreamOnly, "");
    read("exit 0");
    EXPECT_NE(
        Server::Stream()->getText().find(
            "|COMMAND_LOG: Command to launch translator executable: " + m_Host.m_Command + "\n"),
        std::string::npos);
    Server::echo_end();
}

TEST_F(Import, ASecondClientJoinsTheOpenTranslator)
{
    ImportHost second;
    second.m_Command = "/never/asked";
    second.getExecIO()->addOption(IOption::create("goes", "with the second"));
    m_Host.m_Command = tests::scriptedCommand("options; read; expect q; frame 126");
    m_Host.initServer(1);
    EXPECT_EQ(Client::m_RefCounter, 1);
    second.initServer(9);
    EXPECT_EQ(Client::m_RefCounter, 2);
    EXPECT_EQ(Server::ServerType(), 1U);
    second.finiServer();
    EXPECT_EQ(Client::m_RefCounter, 1);
    EXPECT_EQ(second.getExecIO()->size(), 0);
    EXPECT_EQ(m_Host.getExecIO()->size(), 1);
    EXPECT_TRUE(Server::isOpen());
    m_Host.finiServer();
    EXPECT_EQ(Client::m_RefCounter, 0);
    EXPECT_FALSE(Server::isOpen());
}

TEST_F(Import, FiniServerWithoutAChannelLeavesCountAndOptions)
{
    m_Host.getExecIO()->addOption(IOption::create("stays", ""));
    m_Host.finiServer();
    EXPECT_EQ(Client::m_RefCounter, 0);
    EXPECT_EQ(m_Host.getExecIO()->size(), 1);
}

TEST_F(Import, TheFileNameRequestWithoutAFileNameIsNotAnswered)
{
    char buffer[1] = {123};
    int position = 1;
    int id = 123;
    EXPECT_FALSE(m_Host.onFilePathNameOk(buffer, position, false, id));
    EXPECT_TRUE(m_Host.m_Notes.empty());
}

TEST_F(Import, MayRunAgainOnOneObject)
{
    EXPECT_TRUE(read(SoundImport));
    EXPECT_FALSE(read("read; frame 122 i32 3 i64 0; read; frame 126; read; frame 126"));
    EXPECT_EQ(m_Host.serverExitStatus(), 3U);
    EXPECT_TRUE(read(SoundImport));
    EXPECT_EQ(tests::points().size(), 2U);
}

} // namespace
} // namespace transl_tk
