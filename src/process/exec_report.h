#ifndef KELD_TRANSL_SRC_PROCESS_EXEC_REPORT_H
#define KELD_TRANSL_SRC_PROCESS_EXEC_REPORT_H

#include <keld-common/files.h>
#include <keld-transl/process/server.h>

#include <ostream>
#include <string>

namespace transl_tk {

/// Writes one line of the report.
template <class... Parts> void reportLine(Parts const &... parts)
{
    (Server::Stream()->post(StreamPolicy::Report) << ... << parts) << std::endl;
}

inline bool fileExists(std::string const & path)
{
    return iaccess(path.c_str(), "e") == 0;
}

} // namespace transl_tk

#endif
