#ifndef KELD_TRANSLATOR_KIT_HOST_WATCH_H
#define KELD_TRANSLATOR_KIT_HOST_WATCH_H

#include <keld-common/channel.h>

#include <thread>

namespace translator_kit {

/// Ends this process, while it is at work, as soon as the host is gone.
class HostWatch
{
public:
    /// Watches the command pipe for its hang-up from a thread of its own.
    explicit HostWatch(TranslatorEnds const & ends);
    HostWatch(HostWatch const &) = delete;
    HostWatch & operator=(HostWatch const &) = delete;
    ~HostWatch();

private:
    int m_Stop; ///< readable once the watch is to end
    std::thread m_Thread;
};

} // namespace translator_kit

#endif
