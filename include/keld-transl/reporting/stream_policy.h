#ifndef KELD_TRANSL_REPORTING_STREAM_POLICY_H
#define KELD_TRANSL_REPORTING_STREAM_POLICY_H

#include <keld-transl/export.h>

#include <iosfwd>
#include <string>

namespace transl_tk {

/// Where the toolkit's own text goes: messages to the console, tracing lines to the report file.
///
/// `Server::Stream` gives the current policy, `Server::echo_start` and `Server::echo_end` change
/// it. A fresh process has the silent one.
class KELD_TRANSL_EXPORT StreamPolicy
{
protected:
    StreamPolicy() = default;

public:
    StreamPolicy(StreamPolicy const &) = delete;
    StreamPolicy & operator=(StreamPolicy const &) = delete;

    enum Type : int {
        Error = 0,   ///< standard error, behind "    Error : "
        Warning = 1, ///< standard output, behind "    Warning : "
        Debug = 2,   ///< standard output, behind "DEBUG: "
        Plain = 3,   ///< standard output
        Report = 4   ///< the report, never the console
    };

    enum Mode : int {
        StreamAndFile = 0, ///< console and report file
        StreamOnly = 1,    ///< console; the report stays in memory
        FileOnly = 2,      ///< report file
        Silent = 3         ///< neither
    };

    /// The stream for a message of `type`, with the type's prefix written already. The caller
    /// writes the message and ends the line. The stream stays owned by the policy. What is written
    /// with a number that is no type is lost.
    virtual std::ostream & post(Type type) = 0;

    /// All that was written with type `Report` so far.
    virtual std::string getText() = 0;

    /// Path of the report file, empty when there is none. The file is written when the policy
    /// goes.
    virtual std::string getFilePath() = 0;

    virtual ~StreamPolicy();
};

} // namespace transl_tk

#endif
