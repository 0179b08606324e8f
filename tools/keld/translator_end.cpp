#include "translator_end.h"

#include <algorithm>
#include <cmath>
#include <csignal>
#include <cstdio>
#include <cstring>
#include <iterator>

namespace keld {

namespace {

/// What a shell adds to the number of the signal that ended a program, for its own exit code.
constexpr int ShellOffset = 128;

std::string signalWords(int signal)
{
    char const * const name = sigdescr_np(signal);
    return "signal " + std::to_string(signal) +
           (name == nullptr ? "" : std::string(" (") + name + ")");
}

/// The signal that ended the translator, or the program that its script started; 0 for none.
int signalOf(TranslatorEnding const & ending)
{
    if (ending.how == KELD_ENDING_SIGNALLED)
        return ending.number;
    bool const fromScript =
        ending.how == KELD_ENDING_EXITED && sigdescr_np(ending.number - ShellOffset) != nullptr;
    return fromScript ? ending.number - ShellOffset : 0;
}

std::string number(double value)
{
    char text[64];
    std::snprintf(text, sizeof(text), "%.10g", value);
    return text;
}

} // namespace

std::string wordsForEnding(TranslatorEnding const & ending, std::string const & place)
{
    int const signal = signalOf(ending);
    std::string words = "the translator ended without an answer";
    if (ending.how == KELD_ENDING_SIGNALLED)
        words += ", killed by " + signalWords(signal);
    else if (ending.how == KELD_ENDING_STOPPED)
        words = "the translator stopped talking without an answer and had to be ended";
    else if (ending.how == KELD_ENDING_EXITED)
        words += ", with exit code " + std::to_string(ending.number);
    if (ending.how == KELD_ENDING_EXITED && signal != 0)
        words += ", which from a script means " + signalWords(signal);
    words += place;
    if (signal == SIGKILL)
        words += "; the system kills like this when memory runs out";
    return words + "; nothing came of the run.";
}

std::string wordsForTimeLimit(Limits const & limits, std::string const & place)
{
    return "the translator took longer than the " + number(limits.seconds) +
           " s that --time-limit allows" + place + "; it was ended.";
}

std::string wordsForMemoryLimit(Limits const & limits, double peak, std::string const & place)
{
    char taken[64];
    std::snprintf(taken, sizeof(taken), "%.0f", std::ceil(peak));
    return std::string("the translator took ") + taken + " MB of memory, more than the " +
           number(limits.megabytes) + " MB that --memory-limit allows" + place + "; it was ended.";
}

bool isCrash(TranslatorEnding const & ending)
{
    constexpr int Faults[] = {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT};
    int const signal = signalOf(ending);
    return std::any_of(std::begin(Faults), std::end(Faults),
                       [signal](int fault) { return fault == signal; });
}

} // namespace keld
