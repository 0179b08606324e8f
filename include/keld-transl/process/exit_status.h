#ifndef KELD_TRANSL_PROCESS_EXIT_STATUS_H
#define KELD_TRANSL_PROCESS_EXIT_STATUS_H

namespace transl_tk {

/// How a run ended: one space of numbers for host and translator. `Client::serverExitStatusMsg` has
/// the words; a number that is not listed here is an unexpected error.
enum ExitStatus : unsigned int {
    ExitFailed = 0,
    ExitExportFailed = 1,
    ExitUnsupportedFileType = 2,
    ExitEmptyModel = 3,
    ExitMissingExportInfo = 5,
    ExitCompleted = 8,
    ExitCancelled = 9,
    ExitNoOptionsFile = 11 ///< set by the host alone
};

} // namespace transl_tk

#endif
