#ifndef KELD_TOOLS_REPORT_JSON_H
#define KELD_TOOLS_REPORT_JSON_H

#include "json_output.h"
#include "run_summary.h"

namespace keld {

/// The report of a run as JSON, as docs/json.md has it.
void writeReportJson(RunSummary const & summary, JsonOutput & output);

/// What the JSON of reports and models has in common.
nlohmann::ordered_json statusJson(RunOutcome const & outcome);
void writeEntriesJson(std::vector<SummaryEntry> const & entries, JsonOutput & output);
void writeLogJson(std::vector<LogLine> const & log, JsonOutput & output);

} // namespace keld

#endif
