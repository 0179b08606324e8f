#ifndef KELD_EXAMPLES_LIMITED_WARNINGS_H
#define KELD_EXAMPLES_LIMITED_WARNINGS_H

#include <keld-translator-kit/options.h>
#include <keld-translator-kit/run.h>

#include <algorithm>
#include <string>

namespace xyz {

/// Warnings of one kind, of which only the first go into the log as they are.
class LimitedWarnings
{
public:
    explicit LimitedWarnings(translator_kit::Run & run)
        : m_Run(run), m_Limit(run.options().integer("warning_limit").value_or(10))
    {}

    void add(std::string const & words)
    {
        if (m_Count++ < m_Limit)
            m_Run.warning(words);
    }

    /// Says how many there were beyond the first ones; `what` names them.
    void end(std::string const & what)
    {
        long long const more = m_Count - std::max(m_Limit, 0LL);
        if (more > 0)
            m_Run.warning(std::to_string(more) + " more " + what + ".");
    }

    long long count() const { return m_Count; }

private:
    translator_kit::Run & m_Run;
    long long m_Limit;
    long long m_Count = 0;
};

} // namespace xyz

#endif
