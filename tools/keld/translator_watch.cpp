#include "translator_watch.h"

#include "group_memory.h"

#include <keld-common/channel.h>

#include <algorithm>
#include <optional>

namespace keld {

namespace {

using namespace std::chrono_literals;

constexpr auto MemoryInterval = 10ms;
constexpr int Patience = 100; // milliseconds for a translator that tidies up when it is terminated
constexpr double Megabyte = 1e6;

} // namespace

TranslatorWatch::TranslatorWatch(Limits const & limits) : m_Limits(limits)
{
    if (limits.seconds > 0 || limits.megabytes > 0)
        m_Thread = std::thread([this] { watch(); });
}

TranslatorWatch::~TranslatorWatch()
{
    if (!m_Thread.joinable())
        return;
    {
        std::lock_guard const lock(m_Mutex);
        m_Ends = true;
    }
    m_Changed.notify_one();
    m_Thread.join();
}

void TranslatorWatch::resume()
{
    {
        std::lock_guard const lock(m_Mutex);
        m_Since = Clock::now();
        m_Runs = true;
    }
    m_Changed.notify_one();
}

void TranslatorWatch::pause()
{
    std::lock_guard const lock(m_Mutex);
    if (m_Runs)
        m_Used += Clock::now() - m_Since;
    m_Runs = false;
}

TranslatorWatch::Excess TranslatorWatch::excess()
{
    std::lock_guard const lock(m_Mutex);
    return m_Excess;
}

void TranslatorWatch::watch()
{
    std::optional<GroupMemory> memory;
    std::unique_lock lock(m_Mutex);
    while (!m_Ends && m_Excess == Excess::None) {
        if (!m_Runs) {
            m_Changed.wait(lock);
            continue;
        }
        if (m_Limits.megabytes > 0 && !memory && ServerGetProcess(KELD_CHANNEL_NUMBER) != 0)
            memory.emplace(ServerGetProcess(KELD_CHANNEL_NUMBER));
        if (memory)
            m_Peak = std::max(m_Peak, static_cast<double>(memory->bytes()) / Megabyte);
        Clock::duration const left = timeLeft();
        if (memory && m_Peak > m_Limits.megabytes)
            m_Excess = Excess::Memory;
        else if (left <= 0s)
            m_Excess = Excess::Time;
        else
            m_Changed.wait_for(lock, m_Limits.megabytes > 0
                                         ? std::min<Clock::duration>(left, MemoryInterval)
                                         : left);
    }
    bool const exceeded = m_Excess != Excess::None;
    lock.unlock();
    if (exceeded)
        ServerEndNow(KELD_CHANNEL_NUMBER, Patience);
}

TranslatorWatch::Clock::duration TranslatorWatch::timeLeft() const
{
    if (m_Limits.seconds <= 0)
        return 24h;
    auto const used = m_Used + (Clock::now() - m_Since);
    auto const allowed = std::chrono::duration<double>(m_Limits.seconds);
    return std::chrono::duration_cast<Clock::duration>(allowed) - used;
}

} // namespace keld
