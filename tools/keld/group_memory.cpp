#include "group_memory.h"

#include <cstdlib>
#include <dirent.h>
#include <fstream>
#include <memory>
#include <unistd.h>

namespace keld {

namespace {

using namespace std::chrono_literals;

long long bytesOf(std::string const & process)
{
    std::ifstream status("/proc/" + process + "/status");
    long long kilobytes = 0;
    for (std::string line; std::getline(status, line);) {
        for (std::string const name : {"RssAnon:", "RssShmem:", "VmSwap:"}) {
            if (line.compare(0, name.size(), name) == 0)
                kilobytes += std::strtoll(line.c_str() + name.size(), nullptr, 10);
        }
    }
    return 1024 * kilobytes;
}

} // namespace

long long GroupMemory::bytes()
{
    // To look for new processes costs more than to ask those that are known.
    constexpr auto Interval = 200ms;
    auto const now = std::chrono::steady_clock::now();
    if (m_Members.empty() || now - m_Found > Interval) {
        findMembers();
        m_Found = now;
    }
    long long sum = 0;
    for (std::string const & process : m_Members)
        sum += bytesOf(process);
    return sum;
}

void GroupMemory::findMembers()
{
    m_Members.clear();
    std::unique_ptr<DIR, int (*)(DIR *)> const processes(opendir("/proc"), closedir);
    while (dirent const * const entry = processes == nullptr ? nullptr : readdir(processes.get())) {
        long const process = std::strtol(entry->d_name, nullptr, 10);
        if (process > 0 && getpgid(static_cast<pid_t>(process)) == m_Group)
            m_Members.emplace_back(entry->d_name);
    }
}

} // namespace keld
