#ifndef KELD_TOOLS_BATCH_WORKER_H
#define KELD_TOOLS_BATCH_WORKER_H

#include "batch/captured_output.h"
#include "batch/records.h"

#include <array>
#include <functional>
#include <poll.h>
#include <sys/types.h>

namespace keld {

/// A child process that imports one file.
///
/// What it prints and what it tells come through pipes, which this process reads all the time, so
/// that no worker ever waits for another.
class Worker
{
public:
    /// What the child does: imports, and tells of its progress through the argument.
    using Task = std::function<FileResult(std::function<void(int percent)> const & progress)>;

    /// Forks. In the child, `prepare` runs first, then `task`; it never returns. This process must
    /// have no thread but one. Throws std::system_error when there is no further process.
    Worker(std::function<void()> const & prepare, Task const & task);
    Worker(Worker const &) = delete;
    Worker & operator=(Worker const &) = delete;

    /// Lets go of the pipes; kills and reaps a child that still runs.
    ~Worker();

    pid_t process() const { return m_Process; }

    /// What to poll: the end of the child, and its pipes.
    static constexpr std::size_t Descriptors = 4;
    void addTo(std::vector<pollfd> & list) const;

    /// Reads what the pipes hold now.
    void read();

    /// Whether the child has ended; then it is reaped.
    bool hasEnded();

    void signal(int signal) const;

    int percent() const { return m_Records.percent(); }

    /// The signal that ended the child; 0 for none.
    int endSignal() const;

    /// What came of the file; a child that says nothing has failed. After `hasEnded`, and a last
    /// `read`.
    FileResult result() const;

    CapturedOutput const & output() const { return m_Output; }
    CapturedOutput const & messages() const { return m_Messages; }

    /// Closes the descriptors; for the children that are forked later.
    void close();

private:
    enum Pipe : std::size_t { Records, Output, Messages, Pipes };

    [[noreturn]] static void work(Task const & task, int records);

    pid_t m_Process = -1;
    int m_End = -1; ///< tells of the child's end
    std::array<int, Pipes> m_Pipes = {-1, -1, -1};
    int m_Status = 0;
    bool m_Ended = false;
    RecordReader m_Records;
    CapturedOutput m_Output;
    CapturedOutput m_Messages;
};

} // namespace keld

#endif
