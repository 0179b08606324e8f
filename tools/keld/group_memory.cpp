#include "group_memory.h"

#include <cstdio>
#include <cstring>
#include <dirent.h>
#include <memory>
#include <unistd.h>

namespace keld {

namespace {

using namespace std::chrono_literals;

using File = std::unique_ptr<std::FILE, int (*)(std::FILE *)>;

/// The kilobytes of a line of a process's status, 0 when it is another line.
long long kilobytesOf(char const * line)
{
    for (char const * const name : {"RssAnon:", "RssShmem:", "VmSwap:"}) {
        long long number = 0;
        std::size_t const length = std::strlen(name);
        if (std::strncmp(line, name, length) == 0 &&
            std::sscanf(line + length, "%lld", &number) == 1)
            return number;
    }
    return 0;
}

long long bytesOf(std::string const & process)
{
    File const status(std::fopen(("/proc/" + process + "/status").c_str(), "re"), std::fclose);
    long long kilobytes = 0;
    char line[256];
    while (status != nullptr && std::fgets(line, sizeof(line), status.get()) != nullptr)
        kilobytes += kilobytesOf(line);
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
        int process = 0;
        if (std::sscanf(entry->d_name, "%d", &process) == 1 && getpgid(process) == m_Group)
            m_Members.emplace_back(entry->d_name);
    }
}

} // namespace keld
