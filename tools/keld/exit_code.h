#ifndef KELD_TOOLS_EXIT_CODE_H
#define KELD_TOOLS_EXIT_CODE_H

namespace keld {

/// What the program answers to its caller; the help text lists the same.
enum ExitCode : int {
    Success = 0,
    RunFailed = 1,         ///< as a rule the translator says why
    WrongUsage = 2,        ///< a wrong command line or file name
    TranslatorMissing = 3, ///< no translator for the file, or one that cannot be started
    NoAnswer = 4,          ///< the translator ended without an answer
    ExchangeFailed = 5,    ///< options or model could not be handed over
    RunCancelled = 6,
    OutputFailed = 7,   ///< standard output or the report could not be written
    DatabaseFailed = 8, ///< a database of metadata could not be used
    LimitExceeded = 9,  ///< the translator went beyond a limit and was ended
    SomeFailed = 10     ///< of several files, some completed and others did not
};

} // namespace keld

#endif
