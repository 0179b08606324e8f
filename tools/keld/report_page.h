#ifndef KELD_TOOLS_REPORT_PAGE_H
#define KELD_TOOLS_REPORT_PAGE_H

#include "run_summary.h"

#include <string>

namespace keld {

/// The report of a run as an HTML page that needs no other file and no network, and runs nothing.
/// Of the log, the entries and the product tree no more than the first 10000 rows each.
std::string reportPage(RunSummary const & summary);

} // namespace keld

#endif
