#ifndef KELD_TOOLS_TRANSLATOR_WATCH_H
#define KELD_TOOLS_TRANSLATOR_WATCH_H

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace keld {

/// What a translator may take; 0 is any amount.
struct Limits
{
    double seconds = 0;
    double megabytes = 0; ///< 1 MB is a million bytes
};

/// Ends the translator of this process when it goes beyond its limits.
///
/// The limits hold from the first `resume` on, but for the times between `pause` and the next
/// `resume`, when the host is at work itself. Without limits nothing is watched.
class TranslatorWatch
{
public:
    enum class Excess { None, Time, Memory };

    explicit TranslatorWatch(Limits const & limits);
    TranslatorWatch(TranslatorWatch const &) = delete;
    TranslatorWatch & operator=(TranslatorWatch const &) = delete;
    ~TranslatorWatch();

    void resume();
    void pause();

    /// Which limit the translator was ended for.
    Excess excess();

    /// The most memory that it was seen with, in megabytes. Asked when its run is over.
    double peak() const { return m_Peak; }

private:
    using Clock = std::chrono::steady_clock;

    void watch();
    Clock::duration timeLeft() const;

    Limits m_Limits;
    std::mutex m_Mutex;
    std::condition_variable m_Changed;
    bool m_Ends = false;
    bool m_Runs = false;
    Clock::duration m_Used = {}; ///< before `m_Since`
    Clock::time_point m_Since;
    Excess m_Excess = Excess::None;
    double m_Peak = 0;
    std::thread m_Thread;
};

} // namespace keld

#endif
