#ifndef KELD_COMMON_CRASH_REPORT_H
#define KELD_COMMON_CRASH_REPORT_H

/* Crash reports, for translator executables: a host installs none. */

#include <keld-common/export.h>

#ifdef __cplusplus
extern "C" {
#endif

/* Called after a dump file was written, on the faulting thread. `answer` is the last argument of
 * install_crash_report_args; the result is ignored. */
typedef int (*crash_report_callback)(int signal, int answer);

/* Installs a handler of SIGSEGV, SIGBUS, SIGILL, SIGFPE and SIGABRT for the whole process. At a
 * fault it writes a readable dump file "vorn_dump_<process id>.txt" into `directory`: signal,
 * faulting address, command line, and a backtrace with module offsets and symbols where known. Then
 * it calls `callback`, when not null, and lets the process die of the original signal, also one
 * that was sent. The handler uses async-signal-safe means up to the callback, and runs on a stack
 * of its own in the thread that made the call, so that an overflow of that thread's stack is
 * reported too. A fault in the callback ends the process at once; a report and callback that take
 * more than five seconds are given up. The file is new, and its owner's alone. `directory` ends in
 * a separator or not. `reserved` is 0. A second call changes directory and callback. */
KELD_COMMON_EXPORT void install_crash_report_args(char const * directory, int reserved,
                                                  crash_report_callback callback, int answer);

/* Path of the dump file just written; an empty text before the first fault or when it could not be
 * written. Owned by the library. */
KELD_COMMON_EXPORT char const * crash_report_get_filename(void);

#ifdef __cplusplus
}
#endif

#endif
