#include "sign_of_life.h"

#include <keld-translator-kit/run.h>

#include <chrono>

namespace step {

SignOfLife::SignOfLife(translator_kit::Run & run) : m_Run(run), m_Thread([this] { tell(); }) {}

SignOfLife::~SignOfLife()
{
    {
        std::lock_guard const lock(m_Mutex);
        m_End = true;
    }
    m_Ended.notify_one();
    m_Thread.join();
}

void SignOfLife::tell()
{
    using namespace std::chrono_literals;
    std::unique_lock lock(m_Mutex);
    while (!m_Ended.wait_for(lock, 500ms, [this] { return m_End; }))
        m_Run.alive();
}

} // namespace step
