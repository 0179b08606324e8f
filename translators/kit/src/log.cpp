#include "log.h"

#include <keld-transl/model/pool.h>
#include <keld-transl/reporting/logger_policy.h>

#include <cstdio>
#include <unistd.h>

namespace translator_kit {

namespace {

char const * prefixOf(cad::ILoggerPolicy::SubType subType)
{
    switch (subType) {
    case cad::ILoggerPolicy::ErrorLine:
        return "Error : ";
    case cad::ILoggerPolicy::WarningLine:
        return "Warning : ";
    default:
        return "";
    }
}

bool printEntry(char const * text, cad::ILoggerPolicy::SubType const & subType, bool const & show,
                void * translator)
{
    if (show)
        printLine(*static_cast<std::string const *>(translator),
                  prefixOf(subType) + std::string(text));
    return true;
}

} // namespace

void printLine(std::string const & translator, std::string const & words)
{
    // On a terminal the host's progress display may stand on the current line.
    std::string const start = isatty(STDERR_FILENO) ? "\r\x1b[K" : "";
    std::string const line = start + translator + ": " + words + "\n";
    std::fwrite(line.data(), 1, line.size(), stderr);
}

void printLog(std::string const & translator)
{
    std::string name = translator;
    transl_tk::Pool::getInstance()->logger()->for_each_entry(UserLog, printEntry, &name);
}

} // namespace translator_kit
