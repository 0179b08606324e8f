#ifndef KELD_TRANSL_REPORTING_LIB_CONFIGURE_H
#define KELD_TRANSL_REPORTING_LIB_CONFIGURE_H

#include <keld-transl/export.h>

namespace transl_tk {

/// Hands the library up to three callbacks, once a process, before any other thread exists.
///
/// Behind `count` follow that many names, `char const *`; a name that is known is followed by its
/// callback, any other by the next name:
/// - "useDiagnostics": `int (*)()`
/// - "startQAClock": `void * (*)(int, char const *)`
/// - "stopQAClock": `void (*)(void *)`
///
/// Calls after the first one have no effect.
KELD_TRANSL_EXPORT void libConfigure(int count, ...);

/// Finds a directory for the report file: the value of the first of TMP, TMPDIR, TEMP, TEMPDIR,
/// HOME and PWD that is set and can be read and written. True, and the value in `*path`, which the
/// caller frees with free(). Otherwise false; `*path` is then null or a text that the caller frees.
KELD_TRANSL_EXPORT bool getTempDirectoryPath(char ** path);

namespace dbg {

/// What the host's callback answers; 0 without one. An answer other than -1 is kept for the life
/// of the process.
KELD_TRANSL_EXPORT int useDiagnostics();

/// Starts a clock of the host under `label`. Null without a callback.
KELD_TRANSL_EXPORT void * startQAClock(int number, char const * label);

/// Stops a clock; null is no fault.
KELD_TRANSL_EXPORT void stopQAClock(void * clock);

} // namespace dbg

} // namespace transl_tk

#endif
