#include "process/keld_program.h"

#include <keld-common/channel.h>
#include <keld-transl/model/pool.h>
#include <keld-transl/process/server.h>
#include <keld-transl/reporting/logger_policy.h>

#include <cstring>
#include <fcntl.h>
#include <gmock/gmock.h>
#include <ostream>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using tests::contentOf;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;

struct Row
{
    char const * name;
    int code;
    char const * err;
};

void PrintTo(Row const & row, std::ostream * stream)
{
    *stream << row.name;
}

class KitFailure : public testing::TestWithParam<Row>
{};

TEST_P(KitFailure, OnImportBecomesAStatusWithItsWords)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);

    Ended const ended = keld.run({"import", "-q", std::string(GetParam().name) + ".kit"});

    EXPECT_EQ(GetParam().code, ended.code);
    EXPECT_EQ(GetParam().err, ended.err);
}

INSTANTIATE_TEST_SUITE_P(
    Table, KitFailure,
    testing::Values(
        Row{"fail-0", 1,
            "    Warning : a warning\n    Error : as the name says\n"
            "keld: fail-0.kit: Failed! (exit status 0)\n"},
        Row{"fail-1", 1,
            "    Warning : a warning\n    Error : as the name says\n"
            "keld: fail-1.kit: Export procedure failed (exit status 1)\n"},
        Row{"fail-2", 1,
            "    Warning : a warning\n    Error : as the name says\n"
            "keld: fail-2.kit: Failed! Unsupported file type (exit status 2)\n"},
        Row{"fail-3", 1,
            "    Warning : a warning\n    Error : as the name says\n"
            "keld: fail-3.kit: Failed! Model is empty (exit status 3)\n"},
        // No model goes over here, so the translator prints the log itself.
        Row{"fail-5", 1,
            "kit_translator: Warning : a warning\nkit_translator: Error : as the name says\n"
            "keld: fail-5.kit: Failed! Missing export info (exit status 5)\n"},
        Row{"fail-9", 6,
            "kit_translator: Warning : a warning\nkit_translator: Error : as the name says\n"
            "keld: fail-9.kit: Server cancelled (exit status 9)\n"},
        Row{"throw-standard", 1,
            "    Error : a standard exception\n"
            "keld: throw-standard.kit: Failed! (exit status 0)\n"},
        Row{"throw-memory", 1,
            "    Error : There is not enough memory for this model.\n"
            "keld: throw-memory.kit: Failed! (exit status 0)\n"},
        Row{"throw-other", 1,
            "    Error : The translator failed without saying why.\n"
            "keld: throw-other.kit: Failed! (exit status 0)\n"}));

TEST(KitTranslator, OnExportPrintsItsLogBehindItsName)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);

    Ended const ended = keld.run({"export", "-q", "succeed.kit"});

    EXPECT_EQ(0, ended.code);
    EXPECT_EQ("kit_translator: a message\nkit_translator: Warning : a warning\n"
              "kit_translator: Error : an error\n",
              ended.err);
    EXPECT_EQ("half whole\n", contentOf(keld.files() / "succeed.kit"));
}

TEST(KitTranslator, OnExportTakesAnyExceptionForAFailedExport)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);

    Ended const ended = keld.run({"export", "-q", "throw-standard.kit"});

    EXPECT_EQ(1, ended.code);
    EXPECT_EQ("kit_translator: Error : a standard exception\n"
              "keld: throw-standard.kit: Export procedure failed (exit status 1)\n",
              ended.err);
    EXPECT_EQ(0U, keld.files().names().count("throw-standard.kit"));
}

TEST(KitTranslator, AFailedExportKeepsTheOldFile)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    std::string const path = keld.file("write-and-fail.kit", "old");

    EXPECT_EQ(1, keld.run({"export", "-q", "write-and-fail.kit"}).code);
    EXPECT_EQ("old", contentOf(path));
    EXPECT_EQ((std::set<std::string>{"installation", "write-and-fail.kit"}), keld.files().names());
}

TEST(KitTranslator, ADeathInTheMiddleOfTheFileKeepsTheOldOne)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);
    std::string const path = keld.file("write-and-die.kit", "old");

    EXPECT_EQ(4, keld.run({"export", "-q", "write-and-die.kit"}).code);
    EXPECT_EQ("old", contentOf(path));
    EXPECT_EQ((std::set<std::string>{"installation", "write-and-die.kit"}), keld.files().names());
}

TEST(KitTranslator, SeesTheOptionsByNameAndType)
{
    LeftoverGuard const guard;
    KeldProgram keld;
    keld.install("kit", KELD_TEST_KIT_TRANSLATOR);

    EXPECT_EQ("text words\ninteger 4\nnumber 2.500000\nflag 1\n",
              keld.run({"import", "-q", "-o", "text=words", "-o", "integer=4", "-o", "number=2.5",
                        "-o", "flag=true", "options.kit"})
                  .err);
    EXPECT_EQ("text none\ninteger none\nnumber 7.000000\nflag none\n",
              keld.run({"import", "-q", "-o", "text=1", "-o", "integer=2.5", "-o", "number=7", "-o",
                        "flag=words", "options.kit"})
                  .err);
    EXPECT_EQ("text none\ninteger none\nnumber none\nflag none\n",
              keld.run({"import", "-q", "options.kit"}).err);
}

TEST(KitTranslator, DoesNotRunWithoutAHost)
{
    LeftoverGuard const guard;
    tests::TemporaryDirectory const files;
    std::string const err = files / "err";
    pid_t const process = fork();
    if (process == 0) {
        dup2(open(err.c_str(), O_WRONLY | O_CREAT, 0600), STDERR_FILENO);
        execl(KELD_TEST_KIT_TRANSLATOR, KELD_TEST_KIT_TRANSLATOR, nullptr);
        _exit(127);
    }
    int status = 0;
    waitpid(process, &status, 0);
    EXPECT_EQ(2, WEXITSTATUS(status));
    EXPECT_EQ("kit_translator is a translator: a host program starts it, it does not run alone.\n",
              contentOf(err));
}

/// The kit's translator with the test as its host, command by command.
class KitConversation : public testing::Test
{
protected:
    void SetUp() override
    {
        ASSERT_EQ(1, ServerSetLumoRunning());
        ASSERT_EQ(1, ServerOpen(KELD_CHANNEL_NUMBER, "test", KELD_TEST_KIT_TRANSLATOR, nullptr));
    }

    void TearDown() override { ServerShutdownAndClosePipes(KELD_CHANNEL_NUMBER); }

    static void send(std::string const & command)
    {
        ServerSendValist(KELD_CHANNEL_NUMBER, command.c_str());
    }

    static void sendBlock(std::string command)
    {
        command.resize(4096, '-');
        send(command);
    }

    /// The next `size` bytes from the translator, fewer at the end of input.
    static std::string receive(std::size_t size)
    {
        std::string bytes;
        char byte = 0;
        while (bytes.size() < size && pipe_read(ServerGetPtr(KELD_CHANNEL_NUMBER), &byte, 1) == 1)
            bytes += byte;
        return bytes;
    }

    static void expectEnd() { EXPECT_EQ("", receive(1)); }

    LeftoverGuard m_Guard;
    std::string m_Segment = "kit_test_" + std::to_string(getpid());
};

std::string const Accepted("\x01\x00{", 3);
std::string const EndMark("\x01\x00~", 3);
std::string const Failed("\x05\x00z\x00\x00\x00\x00", 7);

TEST_F(KitConversation, EndsWithTheEndMarkWhenItIsToldToQuit)
{
    send("q\n");
    EXPECT_EQ(EndMark, receive(3));
    expectEnd();
}

TEST_F(KitConversation, EndsWithoutAWordOnAnUnknownCommand)
{
    send("w hat\n");
    expectEnd();
}

TEST_F(KitConversation, TakesARefusedImport)
{
    sendBlock("f flood.kit\n");
    EXPECT_EQ(Accepted, receive(3));
    send("x \n");
    EXPECT_EQ(EndMark, receive(3));
    send("q\n");
    EXPECT_EQ(EndMark, receive(3));
    expectEnd();
}

TEST_F(KitConversation, TakesARefusedExport)
{
    sendBlock("s out.kit\n");
    EXPECT_EQ(Accepted, receive(3));
    send("x \n");
    EXPECT_EQ(EndMark, receive(3));
    send("q\n");
    EXPECT_EQ(EndMark, receive(3));
    expectEnd();
}

TEST_F(KitConversation, LetsGoOfTheSegmentAfterTheAnswer)
{
    sendBlock("f plain.kit\n");
    EXPECT_EQ(Accepted, receive(3));
    send("i " + m_Segment + "\n");
    EXPECT_EQ(std::string("\x09\x00x", 3), receive(11).substr(0, 3));
    EXPECT_TRUE(tests::segmentIsThere(m_Segment));
    send("x u\n");
    EXPECT_EQ(EndMark, receive(3));
    EXPECT_FALSE(tests::segmentIsThere(m_Segment));
}

TEST_F(KitConversation, SaysInTheLogThatTheOptionsAreMissing)
{
    sendBlock("f plain.kit\n");
    EXPECT_EQ(Accepted, receive(3));
    send("i " + m_Segment + "\n");
    std::string const frame = receive(11);
    ASSERT_EQ(11U, frame.size());
    long long size = 0;
    std::memcpy(&size, frame.data() + 3, sizeof(size));
    transl_tk::Pool::construct("test");
    transl_tk::Server::readSharedMem(m_Segment, size);
    EXPECT_EQ("", transl_tk::Server::exchangeFailure());
    EXPECT_EQ("    Warning : The options of this run were not found; the defaults were taken.\n",
              transl_tk::Pool::getInstance()->logger()->GetEntriesOfType(1, cad::ILoggerPolicy::Any,
                                                                         true, false));
    transl_tk::Pool::destruct();
    send("x u\n");
    EXPECT_EQ(EndMark, receive(3));
}

TEST_F(KitConversation, FailsOnASegmentThatIsNotThere)
{
    sendBlock("s out.kit\n");
    EXPECT_EQ(Accepted, receive(3));
    send("e 108, no_such_segment\n");
    EXPECT_EQ(Failed, receive(7));
    send("x \n");
    EXPECT_EQ(EndMark, receive(3));
}

TEST_F(KitConversation, FailsOnAnExportThatNamesNoModel)
{
    for (char const * command : {"e \n", "e x, segment\n", "e 108\n", "e 108, \n"}) {
        sendBlock("s out.kit\n");
        EXPECT_EQ(Accepted, receive(3));
        send(command);
        EXPECT_EQ(Failed, receive(7)) << command;
        send("x \n");
        EXPECT_EQ(EndMark, receive(3));
    }
}

TEST_F(KitConversation, ServesOneFileAfterAnother)
{
    for (int i = 0; i < 3; ++i) {
        sendBlock("f fail-5.kit\n");
        EXPECT_EQ(Accepted, receive(3));
        send("i segment\n");
        EXPECT_EQ(std::string("\x05\x00z\x05\x00\x00\x00", 7), receive(7));
        send("x u\n");
        EXPECT_EQ(EndMark, receive(3));
    }
}

TEST_F(KitConversation, SendsFewProgressFramesHoweverOftenItIsTold)
{
    sendBlock("f flood.kit\n");
    EXPECT_EQ(Accepted, receive(3));
    send("i " + m_Segment + "\n");
    int frames = 0;
    std::string head;
    while ((head = receive(3)) == std::string("\x05\x00y", 3)) {
        receive(4);
        ++frames;
    }
    EXPECT_EQ(std::string("\x09\x00x", 3), head);
    EXPECT_GE(frames, 1);
    // A hundred thousand calls; at ten a second even a very slow machine stays far below.
    EXPECT_LT(frames, 1000);
    receive(8);
    send("x u\n");
    EXPECT_EQ(EndMark, receive(3));
}

TEST_F(KitConversation, EndsWhenTheHostGoesAwayAtAnyPoint)
{
    sendBlock("f plain.kit\n");
    EXPECT_EQ(Accepted, receive(3));
    send("i " + m_Segment + "\n");
    EXPECT_EQ(11U, receive(11).size());
    // TearDown closes the pipes; the guard then looks for the segment and the process.
}

} // namespace
