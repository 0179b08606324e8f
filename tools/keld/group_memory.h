#ifndef KELD_TOOLS_GROUP_MEMORY_H
#define KELD_TOOLS_GROUP_MEMORY_H

#include <chrono>
#include <string>
#include <sys/types.h>
#include <vector>

namespace keld {

/// The memory of all processes of a group.
class GroupMemory
{
public:
    explicit GroupMemory(pid_t group) : m_Group(group) {}

    /// Bytes that they hold at this moment: in memory or swapped out, shared memory included, files
    /// that are mapped not.
    long long bytes();

private:
    void findMembers();

    pid_t m_Group;
    std::vector<std::string> m_Members; ///< process ids
    std::chrono::steady_clock::time_point m_Found;
};

} // namespace keld

#endif
