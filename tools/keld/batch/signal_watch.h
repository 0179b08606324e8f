#ifndef KELD_TOOLS_BATCH_SIGNAL_WATCH_H
#define KELD_TOOLS_BATCH_SIGNAL_WATCH_H

#include <csignal>

namespace keld {

/// Holds back SIGINT, SIGTERM, SIGHUP and SIGPIPE, those that this process ignores apart, and tells
/// through a descriptor when one arrives.
class SignalWatch
{
public:
    /// Throws std::system_error.
    SignalWatch();
    SignalWatch(SignalWatch const &) = delete;
    SignalWatch & operator=(SignalWatch const &) = delete;

    /// Lets the signals through again.
    ~SignalWatch();

    /// Can be read when a signal has arrived.
    int descriptor() const { return m_Descriptor; }

    /// The signal that has arrived; 0 for none.
    int take() const;

    /// Lets the signals through again; for the child of a fork.
    void release();

private:
    sigset_t m_Before;
    int m_Descriptor = -1;
};

} // namespace keld

#endif
