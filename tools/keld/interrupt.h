#ifndef KELD_TOOLS_INTERRUPT_H
#define KELD_TOOLS_INTERRUPT_H

namespace keld {

/// Lets the program die of SIGINT, SIGTERM, SIGHUP and SIGPIPE only after the options file and the
/// segments of its run are gone. Called once, before the first run; starts a thread.
void cleanUpOnInterrupt();

} // namespace keld

#endif
