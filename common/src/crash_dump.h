#ifndef KELD_COMMON_CRASH_DUMP_H
#define KELD_COMMON_CRASH_DUMP_H

#include <csignal>

namespace keld_common {

/// Readies the dump file for `directory`. Everything that needs more than async-signal-safe calls
/// is done here: the command line is read, and the unwinder is loaded and has made its own data.
void prepareDump(char const * directory);

/// Creates the dump file. What follows here is async-signal-safe: it formats by itself into fixed
/// buffers and calls open, fchmod, write and their like. Answers false when there is no file.
bool openDump();

void dumpText(char const * text);
void dumpFault(int signal, siginfo_t const & info, void const * context);

/// Writes one line a frame: the module with the offset in it, which a symbol tool reads, and then
/// the same frames with the symbols that the modules export. Faults when the stack is damaged.
void dumpStack();

void closeDump();

/// Path of the file that closeDump has completed, or an empty text.
char const * dumpPath();

} // namespace keld_common

#endif
