#ifndef KELD_TOOLS_REPORT_PAGE_H
#define KELD_TOOLS_REPORT_PAGE_H

#include "run_summary.h"
#include "view/base64.h"
#include "view/scene.h"

namespace keld {

/// Writes the report of a run as an HTML page that needs no other file and no network: of each of
/// its lists no more than the first 10000 rows, and a picture of `scene`. The one script that there
/// may be makes that a view which can be turned; the page is whole without it.
void writeReportPage(RunSummary const & summary, view::Scene const & scene,
                     view::Sink const & sink);

} // namespace keld

#endif
