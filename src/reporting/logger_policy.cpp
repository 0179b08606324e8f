#include <keld-transl/reporting/logger_policy.h>

namespace cad {

ILoggerPolicy::~ILoggerPolicy() = default;

LoggerInactive::~LoggerInactive() = default;

void LoggerInactive::clear() {}

void LoggerInactive::setProcessingComponent(Component const *) {}

Component const * LoggerInactive::getProcessingComponent()
{
    return nullptr;
}

void LoggerInactive::addEntry(char const *, Type const &, SubType const &, bool const &) {}

void LoggerInactive::addEntry(char const *, Type const &) {}

bool LoggerInactive::hasEntryError(Type const &)
{
    return false;
}

std::string LoggerInactive::GetEntriesOfType(Type const &, SubType const &, bool const &,
                                             bool const &)
{
    return {};
}

bool LoggerInactive::for_each_entry(Type const &, Callback, void *, SubType const &, bool const &)
{
    return true;
}

bool LoggerInactive::for_each_entry(Type const &, Callback, void *)
{
    return true;
}

} // namespace cad
