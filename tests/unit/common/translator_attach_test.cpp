#include "unit/common/channel_fixture.h"

#include <cstdlib>
#include <fcntl.h>
#include <unistd.h>

using namespace tests;

namespace {

class Pipe
{
public:
    Pipe() { EXPECT_EQ(::pipe(m_Ends), 0); }
    ~Pipe()
    {
        ::close(m_Ends[0]);
        ::close(m_Ends[1]);
    }
    Pipe(Pipe const &) = delete;
    Pipe & operator=(Pipe const &) = delete;

    int readEnd() const { return m_Ends[0]; }
    int writeEnd() const { return m_Ends[1]; }

private:
    int m_Ends[2] = {-1, -1};
};

class TranslatorAttachment : public testing::Test
{
protected:
    LeftoverGuard m_Guard;
    Pipe m_Commands;
    Pipe m_Frames;
    std::string m_Read = std::to_string(m_Commands.readEnd());
    std::string m_Write = std::to_string(m_Frames.writeEnd());
};

} // namespace

TEST_F(TranslatorAttachment, FindsBothEndsAndTheHost)
{
    ScopedEnvironment const variable("KELD_TRANSL_CHANNEL", m_Read + " " + m_Write + " 4711");
    TranslatorEnds ends = {};
    EXPECT_EQ(TranslatorAttach(&ends), 1);
    EXPECT_EQ(ends.commands, m_Commands.readEnd());
    EXPECT_EQ(ends.frames, m_Frames.writeEnd());
    EXPECT_EQ(ends.hostProcess, 4711);
    EXPECT_EQ(std::getenv("KELD_TRANSL_CHANNEL"), nullptr);
    EXPECT_EQ(::fcntl(ends.commands, F_GETFD), FD_CLOEXEC);
    EXPECT_EQ(::fcntl(ends.frames, F_GETFD), FD_CLOEXEC);
    EXPECT_EQ(TranslatorAttach(&ends), 0) << "a second time there is no variable";
}

TEST_F(TranslatorAttachment, RefusesAnythingButThreeNumbersOfOpenPipeEnds)
{
    std::string const good = m_Read + " " + m_Write + " 4711";
    for (std::string const & text : {std::string(),
                                     m_Read,
                                     m_Read + " " + m_Write,
                                     m_Read + " " + m_Write + " ",
                                     " " + good,
                                     good + " ",
                                     good + " 1",
                                     good + "x",
                                     m_Read + "  " + m_Write + " 4711",
                                     m_Read + "," + m_Write + ",4711",
                                     "+" + good,
                                     "-" + good,
                                     "0x3 " + m_Write + " 4711",
                                     m_Read + " " + m_Write + " 0",
                                     m_Read + " " + m_Write + " -1",
                                     m_Read + " " + m_Write + " 99999999999",
                                     m_Read + " " + m_Read + " 4711",
                                     m_Write + " " + m_Read + " 4711",
                                     "999 " + m_Write + " 4711",
                                     m_Read + " 999 4711"}) {
        ScopedEnvironment const variable("KELD_TRANSL_CHANNEL", text);
        TranslatorEnds ends = {-1, -1, -1};
        EXPECT_EQ(TranslatorAttach(&ends), 0) << text;
        EXPECT_EQ(ends.commands, -1) << text;
        EXPECT_EQ(::fcntl(m_Commands.readEnd(), F_GETFD), 0) << text;
    }
}

TEST_F(TranslatorAttachment, IsNoneWithoutTheVariable)
{
    ScopedEnvironment const variable("KELD_TRANSL_CHANNEL", std::nullopt);
    TranslatorEnds ends = {};
    EXPECT_EQ(TranslatorAttach(&ends), 0);
    EXPECT_EQ(TranslatorAttach(nullptr), 0);
}

KELD_CHILD(answersOnce)
{
    TranslatorEnds ends = {};
    if (TranslatorAttach(&ends) != 1 || std::getenv("KELD_TRANSL_CHANNEL") != nullptr)
        return 1;
    char command[64];
    ssize_t const count = ::read(ends.commands, command, sizeof(command));
    std::string const text =
        std::string(command, static_cast<size_t>(count)) + std::to_string(ends.hostProcess);
    return ::write(ends.frames, text.data(), text.size()) > 0 ? 0 : 1;
}

TEST_F(ChannelTest, ATranslatorAttachesToItsHost)
{
    ASSERT_EQ(open(childCommand("answersOnce")), 1);
    send("hello ");
    EXPECT_EQ(read(), "hello " + std::to_string(::getpid()));
}
