#include "report_file.h"

#include "report_json.h"
#include "report_page.h"

#include <keld-transl/model/pool.h>
#include <keld-translator-kit/output_file.h>

namespace keld {

std::string writeReportFile(std::string const & directory, ReportFormat format,
                            RunSummary const & summary)
{
    bool const isPage = format == ReportFormat::Html;
    std::string const path = directory + (isPage ? "report.html" : "report.json");
    translator_kit::OutputFile file(path);
    auto const write = [&](std::string_view text) { file.write(text.data(), text.size()); };
    if (isPage) {
        writeReportPage(
            summary, view::gatherScene(*transl_tk::Pool::getInstance()->currentSubPool()), write);
    } else {
        JsonOutput output(write);
        writeReportJson(summary, output);
    }
    file.commit();
    return path;
}

} // namespace keld
