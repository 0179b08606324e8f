#ifndef KELD_TESTS_UNIT_COMMON_CHANNEL_FIXTURE_H
#define KELD_TESTS_UNIT_COMMON_CHANNEL_FIXTURE_H

#include "support/leftovers.h"
#include "unit/common/child.h"

#include <keld-common/channel.h>

#include <algorithm>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>

namespace tests {

/// A test with the host's end of the channel. The channel is shut down at its end, and nothing may
/// be left then.
class ChannelTest : public ::testing::Test
{
protected:
    static int open(std::string const & command, char const * libraryPath = nullptr)
    {
        return ServerOpen(KELD_CHANNEL_NUMBER, "transl_tk_server", command.c_str(), libraryPath);
    }

    static int send(std::string const & text)
    {
        return ServerSendValist(KELD_CHANNEL_NUMBER, text.c_str());
    }

    static ServerControl * record() { return ServerGetPtr(KELD_CHANNEL_NUMBER); }

    static void shutDown() { ServerShutdownAndClosePipes(KELD_CHANNEL_NUMBER); }

    /// Everything up to the end of input, or up to `size` bytes.
    static std::string read(size_t size = std::string::npos)
    {
        std::string text;
        char block[4096];
        while (text.size() < size) {
            int const count = pipe_read(
                record(), block, static_cast<int>(std::min(sizeof(block), size - text.size())));
            EXPECT_GE(count, 0) << std::strerror(errno);
            if (count <= 0)
                break;
            text.append(block, static_cast<size_t>(count));
        }
        return text;
    }

    /// The next line, without its end.
    static std::string readLine()
    {
        std::string line;
        for (std::string next = read(1); !next.empty() && next != "\n"; next = read(1))
            line += next;
        return line;
    }

    /// What a child that runs `command` writes.
    static std::string outputOf(std::string const & command, char const * libraryPath = nullptr)
    {
        EXPECT_EQ(open(command, libraryPath), 1) << command;
        std::string text = read();
        shutDown();
        return text;
    }

    void TearDown() override { shutDown(); }

private:
    LeftoverGuard m_Guard;
    ScopedEnvironment m_Grace{"KELD_GRACE_MS", "200"};
};

} // namespace tests

#endif
