#ifndef KELD_TOOLS_REPORT_PAGE_H
#define KELD_TOOLS_REPORT_PAGE_H

#include "run_summary.h"

#include <string>

namespace keld {

/// The report of a run as an HTML page that needs no other file and no network, and runs nothing.
/// Of each of its lists no more than the first 10000 rows.
std::string reportPage(RunSummary const & summary);

} // namespace keld

#endif
