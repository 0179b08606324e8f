#ifndef KELD_TOOLS_REPORT_FILE_H
#define KELD_TOOLS_REPORT_FILE_H

#include "run_summary.h"

#include <string>

namespace keld {

enum class ReportFormat { Html, Json };

/// Writes the report of a run, by which the current model came, to report.html or report.json in
/// `directory`, which ends with a separator. The file appears when it is complete. Gives its path;
/// throws std::exception with a sentence.
std::string writeReportFile(std::string const & directory, ReportFormat format,
                            RunSummary const & summary);

} // namespace keld

#endif
