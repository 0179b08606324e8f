#include "run_report.h"

#include <keld-transl/process/server.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

namespace keld {

using transl_tk::Server;
using transl_tk::StreamPolicy;

RunReport::RunReport(std::string const & directory, Manner manner) : m_Manner(manner)
{
    if (directory.empty()) {
        Server::echo_start(StreamPolicy::StreamOnly, "");
        return;
    }
    std::filesystem::create_directories(directory);
    m_Directory = std::filesystem::canonical(directory).string() + "/";
    setenv("TRANSL_REPORT_FILE", "1", 1);
    Server::echo_start(StreamPolicy::StreamAndFile, m_Directory);
}

RunReport::~RunReport()
{
    std::string const path = Server::Stream()->getFilePath();
    Server::echo_end();
    if (path.empty())
        return;
    std::error_code error;
    if (!std::filesystem::exists(path, error))
        std::fprintf(stderr, "keld: the report %s could not be written.\n", path.c_str());
    else if (m_Manner == Announced)
        std::fprintf(stderr, "Report: %s\n", path.c_str());
}

std::string RunReport::directoryFor(std::string const & name) const
{
    if (m_Directory.empty())
        return {};
    std::string const directory = m_Directory + name + "/";
    std::filesystem::create_directories(directory);
    return directory;
}

DumpWatch::DumpWatch(std::string const & directory) : m_Directory(directory), m_Before(dumps()) {}

void DumpWatch::print() const
{
    for (std::string const & path : dumps()) {
        if (m_Before.count(path) == 0)
            std::fprintf(stderr, "Crash dump: %s\n", path.c_str());
    }
}

std::set<std::string> DumpWatch::dumps() const
{
    std::set<std::string> result;
    std::error_code error;
    for (auto const & entry : std::filesystem::directory_iterator(m_Directory, error)) {
        if (entry.path().filename().string().rfind("vorn_dump_", 0) == 0)
            result.insert(entry.path());
    }
    return result;
}

} // namespace keld
