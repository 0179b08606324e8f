#include "unit/common/channel_fixture.h"

#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <string_view>
#include <unistd.h>
#include <vector>

using namespace tests;

namespace {

std::set<int> openDescriptors()
{
    std::set<int> found;
    for (auto const & entry : std::filesystem::directory_iterator("/proc/self/fd"))
        found.insert(std::stoi(entry.path().filename().string()));
    std::erase_if(found, [](int descriptor) { return ::fcntl(descriptor, F_GETFD) == -1; });
    return found;
}

void writeFrames(std::string_view text)
{
    TranslatorEnds ends = {};
    if (TranslatorAttach(&ends) == 1)
        ::_exit(::write(ends.frames, text.data(), text.size()) == -1 ? 1 : 0);
}

} // namespace

TEST_F(ChannelTest, TheLibraryIsReady)
{
    EXPECT_EQ(ServerSetLumoRunning(), 1);
}

TEST_F(ChannelTest, CommandsAndFramesGoThroughTwoPipes)
{
    ASSERT_EQ(open(shell("read line <&3; echo \"got $line\" >&4")), 1);
    EXPECT_EQ(record()->closed, 0);
    EXPECT_NE(record()->descriptor, 0);
    EXPECT_EQ(send("f a file\n"), 9);
    EXPECT_EQ(read(), "got f a file\n");
    shutDown();
    EXPECT_NE(record()->closed, 0);
    EXPECT_NE(record()->ended, 0);
    EXPECT_EQ(record()->descriptor, 0);
}

TEST_F(ChannelTest, PrintingDoesNotMixWithFrames)
{
    TemporaryDirectory const directory;
    int const saved = ::dup(STDOUT_FILENO);
    int const file = ::open((directory / "printed").c_str(), O_WRONLY | O_CREAT | O_CLOEXEC, 0600);
    ::dup2(file, STDOUT_FILENO);
    std::string const frames = outputOf(shell("echo printed; echo frame >&4; echo again"));
    ::dup2(saved, STDOUT_FILENO);
    ::close(saved);
    ::close(file);
    EXPECT_EQ(frames, "frame\n");
    EXPECT_EQ(contentOf(directory / "printed"), "printed\nagain\n");
}

TEST_F(ChannelTest, APathWithBlanksIsStartedAsItStands)
{
    TemporaryDirectory const directory("/tmp", "unit with blanks ");
    writeScript(directory / "my translator.sh", "#!/bin/sh\necho \"$0 $#\" >&4\n");
    EXPECT_EQ(outputOf(directory / "my translator.sh"), (directory / "my translator.sh") + " 0\n");
}

KELD_CHILD(writesArguments)
{
    std::string text;
    for (int index = 0; index < argc; ++index)
        text.append("[").append(argv[index]).append("]");
    writeFrames(text);
    return 1;
}

TEST_F(ChannelTest, ArgumentsArriveUnexpanded)
{
    EXPECT_EQ(outputOf(childCommand("writesArguments") + " $HOME '*' \"a  b\" ~ ;x `y` >z"),
              "[$HOME][*][a  b][~][;x][`y`][>z]");
    EXPECT_FALSE(std::filesystem::exists("z"));
}

TEST_F(ChannelTest, TheLibraryPathReachesTheTranslatorAlone)
{
    std::string const command = shell("echo \"$LD_LIBRARY_PATH\" >&4");
    ScopedEnvironment const variable("LD_LIBRARY_PATH", "/old:/older");
    EXPECT_EQ(outputOf(command, "/a;;/b:"), "/a:/b:/old:/older\n");
    EXPECT_EQ(outputOf(command, "/a b"), "/a b:/old:/older\n");
    EXPECT_EQ(outputOf(command, nullptr), "/old:/older\n");
    EXPECT_EQ(outputOf(command, ";:"), "/old:/older\n");
    EXPECT_STREQ(std::getenv("LD_LIBRARY_PATH"), "/old:/older");
}

TEST_F(ChannelTest, TheLibraryPathStandsAloneWhereTheHostHasNone)
{
    std::string const command = shell("echo \"${LD_LIBRARY_PATH-unset}\" >&4");
    ScopedEnvironment const variable("LD_LIBRARY_PATH", std::nullopt);
    EXPECT_EQ(outputOf(command, "/a;/b"), "/a:/b\n");
    EXPECT_EQ(outputOf(command, ""), "unset\n");
    EXPECT_EQ(std::getenv("LD_LIBRARY_PATH"), nullptr);
}

TEST_F(ChannelTest, TheTranslatorHasTheEnvironmentOfTheHost)
{
    ScopedEnvironment const variable("SOME_VARIABLE", "a b");
    ScopedEnvironment const stale("KELD_TRANSL_CHANNEL", "8 9 1");
    EXPECT_EQ(outputOf(shell("echo \"$SOME_VARIABLE,$KELD_TRANSL_CHANNEL\" >&4")),
              "a b,3 4 " + std::to_string(::getpid()) + "\n");
}

KELD_CHILD(writesDescriptors)
{
    std::string text;
    for (int descriptor : openDescriptors())
        text += std::to_string(descriptor) + " ";
    writeFrames(text);
    return 1;
}

TEST_F(ChannelTest, TheTranslatorInheritsStandardStreamsAndPipeEndsOnly)
{
    int const inheritable = ::open("/dev/null", O_RDONLY);
    int const high = ::fcntl(inheritable, F_DUPFD, 200);
    EXPECT_EQ(outputOf(childCommand("writesDescriptors")), "0 1 2 3 4 ");
    ::close(inheritable);
    ::close(high);
}

TEST_F(ChannelTest, EveryDescriptorOfTheHostIsCloseOnExec)
{
    // The pipes are looked at where they come high at once, and where they are moved up.
    for (bool lowOnesAreTaken : {false, true}) {
        std::vector<int> taken;
        while (lowOnesAreTaken && taken.size() < 8)
            taken.push_back(::open("/dev/null", O_RDONLY | O_CLOEXEC));
        auto const before = openDescriptors();
        ASSERT_EQ(open(shell("read line <&3")), 1);
        int count = 0;
        for (int descriptor : openDescriptors()) {
            if (before.contains(descriptor))
                continue;
            ++count;
            EXPECT_EQ(::fcntl(descriptor, F_GETFD), FD_CLOEXEC) << descriptor;
        }
        EXPECT_EQ(count, 3) << "two pipe ends and the process";
        shutDown();
        for (int descriptor : taken)
            ::close(descriptor);
    }
}

TEST_F(ChannelTest, AnyLowDescriptorMayBeFreeInTheHost)
{
    expectWellInFork([] {
        int const output = ::fcntl(STDOUT_FILENO, F_DUPFD_CLOEXEC, 50);
        int const file = ::open("/dev/null", O_RDWR | O_CLOEXEC);
        int const other = ::fcntl(file, F_DUPFD_CLOEXEC, 50);
        std::string failures;
        for (unsigned free = 0; free < 128; ++free) {
            for (int descriptor = 0; descriptor < 7; ++descriptor) {
                if ((free >> descriptor & 1) != 0)
                    ::close(descriptor);
                else
                    ::dup3(other, descriptor, O_CLOEXEC);
            }
            bool const opened = open(shell("read line <&3; echo \"got $line\" >&4")) == 1;
            bool const hasDescriptor = record()->descriptor != 0;
            send("hello\n");
            if (!opened || !hasDescriptor || read() != "got hello\n")
                failures += std::to_string(free) + " ";
            shutDown();
        }
        ::dup2(output, STDOUT_FILENO);
        EXPECT_EQ(failures, "");
    });
}

KELD_CHILD(writesSignals)
{
    std::string text = ::getpgrp() == ::getpid() ? "own group" : "shared group";
    sigset_t mask;
    ::pthread_sigmask(SIG_SETMASK, nullptr, &mask);
    for (int number = 1; number < NSIG; ++number) {
        struct sigaction action = {};
        if (::sigismember(&mask, number) == 1)
            text += ", blocked " + std::to_string(number);
        if (::sigaction(number, nullptr, &action) == 0 && action.sa_handler == SIG_IGN)
            text += ", ignored " + std::to_string(number);
    }
    writeFrames(text);
    return 1;
}

TEST_F(ChannelTest, TheTranslatorStartsWithFreshSignalsInAGroupOfItsOwn)
{
    expectWellInFork([] {
        for (int number : {SIGPIPE, SIGINT, SIGTERM, SIGCHLD, SIGUSR1})
            std::signal(number, SIG_IGN);
        sigset_t all;
        ::sigfillset(&all);
        ::pthread_sigmask(SIG_SETMASK, &all, nullptr);
        EXPECT_EQ(outputOf(childCommand("writesSignals")), "own group");
    });
}

TEST_F(ChannelTest, WhatCannotBeStartedLeavesTheChannelClosed)
{
    TemporaryDirectory const directory;
    writeScript(directory / "bad", "#!/no/such/interpreter\n");
    writeScript(directory / "text", "no interpreter line, which takes a shell\n");
    for (std::string const & command :
         {std::string(), std::string("'"), directory / "missing", directory.path().string(),
          directory / "bad", directory / "text"}) {
        ServerControl * const control = record();
        control->closed = 0;
        errno = 0;
        EXPECT_EQ(open(command), 0) << command;
        EXPECT_NE(errno, 0) << command;
        EXPECT_NE(control->closed, 0) << command;
        EXPECT_EQ(control->descriptor, 0) << command;
        EXPECT_EQ(send("x\n"), 0);
    }
    EXPECT_EQ(ServerOpen(KELD_CHANNEL_NUMBER, "x", nullptr, nullptr), 0);
}

TEST_F(ChannelTest, AnotherChannelNumberDoesNothing)
{
    EXPECT_EQ(ServerOpen(25, "x", "/bin/true", nullptr), 0);
    EXPECT_EQ(ServerGetPtr(27), nullptr);
    ASSERT_EQ(open(shell("exec cat <&3 >&4")), 1);
    EXPECT_EQ(ServerSendValist(25, "no\n"), 0);
    ServerSetInactive(25);
    ServerEndOk(25);
    ServerShutdownAndClosePipes(25);
    EXPECT_EQ(record()->closed, 0);
    EXPECT_EQ(send("yes\n"), 4);
    EXPECT_EQ(read(4), "yes\n");
}

TEST_F(ChannelTest, AnInactiveChannelIsClosedUntilItOpens)
{
    ServerSetInactive(KELD_CHANNEL_NUMBER);
    EXPECT_NE(record()->closed, 0);
    EXPECT_EQ(open("/bin/true"), 1);
    EXPECT_EQ(record()->closed, 0);
}

TEST_F(ChannelTest, OpeningAnOpenChannelEndsTheOldTranslator)
{
    ASSERT_EQ(open(shell("echo $$ >&4; exec sleep 60")), 1);
    pid_t const old = std::stoi(readLine());
    ASSERT_EQ(open(shell("echo new >&4")), 1);
    EXPECT_TRUE(hasGone(old));
    EXPECT_EQ(read(), "new\n");
}

TEST_F(ChannelTest, TheRecordAndItsBufferStay)
{
    ServerControl * const control = record();
    char * const buffer = control->buffer;
    std::memset(buffer, 1, KELD_RECEIVE_BUFFER_SIZE);
    for (int round = 0; round < 3; ++round) {
        ASSERT_EQ(open("/bin/true"), 1);
        EXPECT_EQ(record(), control);
        EXPECT_EQ(control->buffer, buffer);
        EXPECT_EQ(control->cursor, buffer);
        EXPECT_EQ(control->unread, 0);
        shutDown();
    }
}

TEST_F(ChannelTest, AnOldPathIsKeptAndFreed)
{
    std::string path = "/a:/b";
    ServerSetOldPath(path.c_str());
    ServerSetOldPath("/c");
    ServerFreeOldPath();
    ServerFreeOldPath();
    ServerSetOldPath(nullptr);
}

TEST_F(ChannelTest, AWrapperScriptPassesTheChannelOn)
{
    TemporaryDirectory const directory;
    writeScript(directory / "wrapper.sh", "#!/bin/sh\nexport EXTRA=1\n" +
                                              childCommand("writesArguments") + " \"$@\" extra\n");
    EXPECT_EQ(outputOf((directory / "wrapper.sh") + " 'a b'"), "[a b][extra]");
}
