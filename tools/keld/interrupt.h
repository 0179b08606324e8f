#ifndef KELD_TOOLS_INTERRUPT_H
#define KELD_TOOLS_INTERRUPT_H

#include <string>

namespace keld {

/// Lets the program die of SIGINT, SIGTERM, SIGHUP and SIGPIPE only after its translator is ended,
/// whatever that one does, and after the options file and the segments of its run are gone.
/// Called before the first run, again in a forked process that is to do runs; starts a thread.
void cleanUpOnInterrupt();

/// While it lives, an interrupt removes the segment of a run, whoever holds it. One at a time. Once
/// the program is interrupted the end of this object waits for that of the program, so that nobody
/// goes on to tell how the run ended.
class InterruptibleRun
{
public:
    explicit InterruptibleRun(std::string const & segment);
    InterruptibleRun(InterruptibleRun const &) = delete;
    InterruptibleRun & operator=(InterruptibleRun const &) = delete;
    ~InterruptibleRun();
};

} // namespace keld

#endif
