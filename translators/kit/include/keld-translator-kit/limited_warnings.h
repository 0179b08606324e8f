#ifndef KELD_TRANSLATOR_KIT_LIMITED_WARNINGS_H
#define KELD_TRANSLATOR_KIT_LIMITED_WARNINGS_H

#include <string>
#include <string_view>

namespace translator_kit {

class Run;

/// Warnings of one kind, of which only the first go into the log as they are: as many as the
/// integer option "warning_limit" says, 10 without it.
class LimitedWarnings
{
public:
    explicit LimitedWarnings(Run & run);

    void add(std::string const & words);

    /// Says how many there were beyond the first ones; `what` names them.
    void end(std::string const & what);

    long long count() const { return m_Count; }

private:
    Run & m_Run;
    long long m_Limit;
    long long m_Count = 0;
};

/// `word` in quotes, fit for a log: bytes that are no printable ASCII are question marks, and what
/// stands behind the 40th byte is left out.
std::string quoted(std::string_view word);

} // namespace translator_kit

#endif
