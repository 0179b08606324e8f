#ifndef KELD_TRANSL_PROCESS_SERVER_H
#define KELD_TRANSL_PROCESS_SERVER_H

#include <keld-transl/reporting/stream_policy.h>

#include <string>

namespace transl_tk {

class IExecIO;

/// The one door to the other process, to the exchange of models, and to the report of the run.
/// Linked into host and translator alike; all of it works on one state per process and belongs to
/// the thread that runs the conversation.
class KELD_TRANSL_EXPORT Server
{
public:
    Server() = delete;

    /// Says whether this process talks to a translator. False at first.
    static void create(bool const & remote);

    /// Starts the translator `command` and opens the channel to it; `libraryPath`, when not empty,
    /// goes in front of the translator's library search path. Nothing happens when the process is
    /// not remote or the channel is open.
    static void open(std::string const & name, std::string const & command,
                     std::string const & libraryPath);

    /// Sends a text to the translator; "%%" in it goes out as "%". Nothing happens on a channel
    /// that is not open.
    static void send(char const * text);

    /// Receives frames until the end mark or the end of input, and calls `callback` for each with
    /// the frame's first byte, the position of its values, whether it has values, its key and
    /// `context`. Blocks the calling thread. Nothing happens on a channel that is not open.
    static void wait(bool (*callback)(char *, int &, bool const &, int &, void *), void * context);

    /// Ends the translator and closes the channel; returns with no child process left.
    static void shutdown();

    static bool isOpen();
    static bool isRemote();

    /// Whether `command` could be started.
    static bool exist(char const * command);

    /// Number of the translator's type, 1 at first.
    static unsigned int ServerType();
    static void SetServerType(unsigned int type);
    /// Whether all bits of the current type are set in `type`.
    static bool IsServerOfType(unsigned int const & type);

    /// The current report stream. Never null; owned by the library.
    static StreamPolicy * Stream();

    /// Changes where reports go. With a path, which ends with a separator, the report file goes
    /// there; only the modes `StreamAndFile` and `FileOnly` take one.
    static void echo_start(StreamPolicy::Mode const & mode, std::string const & path);

    /// Back to silence; a report file is written now.
    static void echo_end();

    /// Writes the current sub-pool into a new segment `name`. Returns the size of its model stream
    /// in bytes, whether anything was written or not: nothing is for an empty name. The segment
    /// stays mapped until `unmapSharedMemory`. `exchangeFailure` tells what went wrong.
    static long long writeSharedMem(std::string const & name);

    /// Rebuilds the model of segment `name`, of `size` bytes, in the current sub-pool, in addition
    /// to what is there and with the same ids. A stream that is not sound leaves the sub-pool as it
    /// was; `exchangeFailure` tells why. Nothing happens for an empty name or a size below 1.
    static void readSharedMem(std::string const & name, long long const & size);

    /// Why the last `writeSharedMem` or `readSharedMem` failed, in a sentence; empty when it did
    /// not.
    static std::string const & exchangeFailure();

    /// Releases the segment; with `force` at once, however often it was mapped.
    static void unmapSharedMemory(bool const & force);

    /// Ends the process: releases the segment and calls exit. The second writes the report first.
    [[noreturn]] static void error_exit(int const & code);
    [[noreturn]] static void quit_exit(int const & code);

    /// Sets up crash dumps in the directory of option "dump_directory" and, when environment
    /// variable TRANSL_REPORT_FILE is set, the report file in that of option "full_reprot". For
    /// translators. Returns true.
    static bool SetDumpFileGenerator(IExecIO * options);
};

} // namespace transl_tk

#endif
