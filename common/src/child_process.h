#ifndef KELD_COMMON_CHILD_PROCESS_H
#define KELD_COMMON_CHILD_PROCESS_H

#include "command_line.h"

#include <keld-common/channel.h>

#include <chrono>
#include <mutex>
#include <string>
#include <sys/types.h>
#include <vector>

namespace keld_common {

using Clock = std::chrono::steady_clock;

/// The descriptors that a child finds its pipe ends under: the first ones behind the standard
/// three, which every shell passes on.
enum : int { ChildCommands = 3, ChildFrames = 4, FirstPrivate = 5 };

/// One child in a process group of its own.
///
/// The child's end is learnt from a descriptor of the process, not from SIGCHLD or its exit status,
/// so that it does not matter what the host does with either.
class ChildProcess
{
public:
    /// Starts `command` with `environment`. The child gets standard input, output and error,
    /// `commands` as ChildCommands and `frames` as ChildFrames, and nothing else; all signals have
    /// their default action there and none is blocked. Both descriptors are at least FirstPrivate.
    /// Answers false, with errno set, when there is no child.
    bool start(StartableCommand const & command, std::vector<std::string> const & environment,
               int commands, int frames);

    /// Readable once the child has ended; -1 when that is known, and without a child.
    int descriptor() const { return m_Descriptor; }

    /// Whether there is no child that runs. Looks, and reaps a child that has ended.
    bool hasEnded();

    /// Waits until the child has ended or `limit` has come; answers which.
    bool waitUntil(Clock::time_point limit);

    /// Gives child and process group until `limit` to end, asks what is left to terminate, kills it
    /// after `patience`, and reaps the child.
    void end(Clock::time_point limit, std::chrono::milliseconds patience);

    /// Asks child and process group to terminate and kills after `patience` what is left. Reaps
    /// nothing. May be called from any thread.
    void endNow(std::chrono::milliseconds patience);

    /// The id of the child and its group, 0 once nothing is left of them. May be called from any
    /// thread.
    pid_t group();

    /// How the child ended that was started last.
    TranslatorEnding const & ending() const { return m_Ending; }

private:
    void onEnd();
    bool groupIsEmpty();
    bool waitForGroup(Clock::time_point limit);
    void signalAll(int signal);

    // Only the thread that runs the child writes these two, and only under the mutex, so that
    // another thread that holds it knows what the numbers mean.
    int m_Descriptor = -1;
    // 0 once no process of the group is left: its number may mean other processes from then on.
    pid_t m_Group = 0;
    std::mutex m_Mutex;
    TranslatorEnding m_Ending = {};
};

} // namespace keld_common

#endif
