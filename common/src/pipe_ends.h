#ifndef KELD_COMMON_PIPE_ENDS_H
#define KELD_COMMON_PIPE_ENDS_H

#include <string_view>
#include <sys/types.h>

namespace keld_common {

/// The four ends of the two pipes between a host and its child, all close-on-exec and all at least
/// FirstPrivate. The destructor closes those that are not -1.
struct PipeEnds
{
    int m_ChildCommands = -1;
    int m_HostCommands =
        -1; // does not block: a full pipe must not hold a host whose child has ended
    int m_HostFrames = -1;
    int m_ChildFrames = -1;

    PipeEnds() = default;
    ~PipeEnds();
    PipeEnds(PipeEnds const &) = delete;
    PipeEnds & operator=(PipeEnds const &) = delete;

    /// Opens all four. Answers false, with errno set, when it could not.
    bool open();
};

/// Number of bytes that lie in the pipe with this read end.
int bytesIn(int descriptor);

/// One write that leaves no SIGPIPE behind, whatever the process does with that signal, and changes
/// nothing that another thread could see.
ssize_t writeWithoutSignal(int descriptor, std::string_view bytes);

} // namespace keld_common

#endif
