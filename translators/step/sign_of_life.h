#ifndef KELD_STEP_SIGN_OF_LIFE_H
#define KELD_STEP_SIGN_OF_LIFE_H

#include <condition_variable>
#include <mutex>
#include <thread>

namespace translator_kit {
class Run;
}

namespace step {

/// While it lives, the host gets a sign of life twice a second. Nothing else may be told to the
/// host meanwhile: it is for work that tells nothing by itself.
class SignOfLife
{
public:
    explicit SignOfLife(translator_kit::Run & run);
    SignOfLife(SignOfLife const &) = delete;
    SignOfLife & operator=(SignOfLife const &) = delete;
    ~SignOfLife();

private:
    void tell();

    translator_kit::Run & m_Run;
    std::mutex m_Mutex;
    std::condition_variable m_Ended;
    bool m_End = false;
    std::thread m_Thread;
};

} // namespace step

#endif
