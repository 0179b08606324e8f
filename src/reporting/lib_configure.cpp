#include "reporting/platform_text.h"

#include <keld-transl/reporting/lib_configure.h>

#include <cstdarg>
#include <string_view>

namespace transl_tk {

namespace {

bool configured = false;
int (*useDiagnosticsCallback)() = nullptr;
void * (*startQAClockCallback)(int, char const *) = nullptr;
void (*stopQAClockCallback)(void *) = nullptr;
int diagnostics = -1;

} // namespace

void libConfigure(int count, ...)
{
    if (configured)
        return;
    std::va_list arguments;
    va_start(arguments, count);
    for (int i = 0; i < count; ++i) {
        char const * const given = va_arg(arguments, char const *);
        std::string_view const name = given == nullptr ? "" : given;
        if (name == "useDiagnostics")
            useDiagnosticsCallback = va_arg(arguments, int (*)());
        else if (name == "startQAClock")
            startQAClockCallback = va_arg(arguments, void * (*)(int, char const *));
        else if (name == "stopQAClock")
            stopQAClockCallback = va_arg(arguments, void (*)(void *));
    }
    va_end(arguments);
    configured = true;
}

bool getTempDirectoryPath(char ** path)
{
    PlatformText value;
    for (char const * variable : {"TMP", "TMPDIR", "TEMP", "TEMPDIR", "HOME", "PWD"}) {
        value.reset(getenv_utf8(variable));
        if (value != nullptr && iaccess(value.get(), "rw") == 0) {
            *path = value.release();
            return true;
        }
    }
    *path = value.release();
    return false;
}

namespace dbg {

int useDiagnostics()
{
    if (diagnostics == -1)
        diagnostics = useDiagnosticsCallback == nullptr ? 0 : useDiagnosticsCallback();
    return diagnostics;
}

void * startQAClock(int number, char const * label)
{
    return startQAClockCallback == nullptr ? nullptr : startQAClockCallback(number, label);
}

void stopQAClock(void * clock)
{
    if (stopQAClockCallback != nullptr)
        stopQAClockCallback(clock);
}

} // namespace dbg

} // namespace transl_tk
