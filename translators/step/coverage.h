#ifndef KELD_STEP_COVERAGE_H
#define KELD_STEP_COVERAGE_H

#include <keld-transl/reporting/html_logger_entry.h>

#include <map>
#include <string>
#include <vector>

namespace translator_kit {
class Run;
}

namespace step {

using Kind = transl_tk::HtmlLoggerEntry::EntityType;

/// Counts, kind by kind, what a file held and what became of it.
class Coverage
{
public:
    void exact(Kind kind, long long count = 1) { m_Counts[kind].exact += count; }

    /// Something arrived in another form; `how` says which, such as "hyperbola as B-spline curve".
    void changed(Kind kind, std::string const & how);

    /// Something did not arrive; `entity` names it in the file, and may be empty.
    void lost(Kind kind, std::string const & entity, std::string const & reason);

    long long lostCount() const;

    /// Puts the counts and the losses into the log of the run and among the entries of its report.
    /// Of losses of one kind and reason, as many as the option "warning_limit" says have a line of
    /// their own. `where` says what was counted.
    void report(translator_kit::Run & run, std::string const & where = "in the file") const;

private:
    struct Loss
    {
        std::string entity;
        std::string reason;
    };

    struct Counts
    {
        long long exact = 0;
        long long changed = 0;
        std::map<std::string, long long> forms;
        std::vector<Loss> losses;
    };

    std::map<Kind, Counts> m_Counts;
};

} // namespace step

#endif
