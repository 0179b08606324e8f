#ifndef KELD_TOOLS_RUN_SUMMARY_H
#define KELD_TOOLS_RUN_SUMMARY_H

#include "product_tree.h"
#include "run_outcome.h"

#include <keld-transl/model/sub_pool.h>
#include <keld-transl/reporting/logger_policy.h>

#include <array>
#include <optional>
#include <string>
#include <vector>

namespace keld {

/// What the numbers of `HtmlLogger::status_type` mean in this program.
enum RunStatus : int { Completed = 0, Failed = 1, Cancelled = 2 };

/// What the numbers of `HtmlLoggerEntry::EntryType` mean in this program.
enum EntryMeaning : int { Information = 0, Warning = 1, Error = 2 };

RunStatus runStatus(ExitCode code);

/// "completed", "failed" or "cancelled".
char const * statusName(int status);

/// "information", "warning" or "error"; "other" for a number without a meaning.
char const * entryTypeName(int type);

/// "text", "indented", "error" or "warning"; "text" for any other number, which has no prefix.
char const * logTypeName(cad::ILoggerPolicy::SubType type);

/// A kind of entity, for the counts of a run.
struct KindCount
{
    int kind = 0;
    std::string name;
    std::optional<unsigned> held; ///< entities in the model, where they are counted
    unsigned failed = 0;          ///< entries of type error
    unsigned reported = 0;        ///< entries of any type
};

struct SummaryEntry
{
    int kind = 0;
    int type = 0;
    std::string text;
};

struct LogLine
{
    int list = 0;
    cad::ILoggerPolicy::SubType type = cad::ILoggerPolicy::Text;
    std::string text;
    bool shown = true;
};

/// What the report of a run says, the texts as they came.
struct RunSummary
{
    std::string file;
    std::string model; ///< empty for a run without one
    RunOutcome outcome;
    RunStatus status = Completed;
    std::vector<KindCount> kinds; ///< those with anything to say, by number; without the total
    KindCount total;
    std::array<unsigned, 3> entryCounts{}; ///< by type
    std::vector<SummaryEntry> entries;
    std::vector<LogLine> log;
    std::size_t logErrors = 0;
    std::vector<ProductNode> tree; ///< of the current model, which must live as long

    /// Whether the run completed and nothing says that anything is missing.
    bool lostNothing() const { return status == Completed && total.failed == 0 && logErrors == 0; }
};

/// The name of a kind of entity, "Kind 77" for a number without one.
std::string kindName(int kind);

/// The lines of the model's log, list by list.
std::vector<LogLine> logLines(transl_tk::SubPool & model);

/// The report entries of the model.
std::vector<SummaryEntry> reportEntries(transl_tk::SubPool const & model);

/// Sums up the run that `file` was brought into the current model by. Puts an assembly of id -1
/// above the product structure when that has no single assembly on top.
RunSummary summariseRun(std::string const & file, RunOutcome const & outcome);

} // namespace keld

#endif
