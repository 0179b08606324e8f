#ifndef KELD_TESTS_SUPPORT_REPORT_CAPTURE_H
#define KELD_TESTS_SUPPORT_REPORT_CAPTURE_H

#include <keld-transl/process/server.h>

#include <string>

namespace tests {

/// Keeps the report in memory while it lives. Messages for the user go to the console.
class ReportCapture
{
public:
    ReportCapture() { transl_tk::Server::echo_start(transl_tk::StreamPolicy::StreamOnly, ""); }
    ~ReportCapture() { transl_tk::Server::echo_end(); }
    ReportCapture(ReportCapture const &) = delete;
    ReportCapture & operator=(ReportCapture const &) = delete;

    std::string text() const { return transl_tk::Server::Stream()->getText(); }
};

} // namespace tests

#endif
