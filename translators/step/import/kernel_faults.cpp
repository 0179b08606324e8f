#include "import/kernel_faults.h"

#include <OSD_SIGSEGV.hxx>
#include <Standard_DivideByZero.hxx>
#include <Standard_ErrorHandler.hxx>
#include <atomic>
#include <csignal>
#include <cstdint>
#include <sys/syscall.h>
#include <unistd.h>

namespace step {

namespace {

std::atomic<pid_t> s_Thread = 0;
std::atomic<int> s_Count = 0;
struct sigaction s_OldSegmentation;
struct sigaction s_OldArithmetic;

pid_t thisThread()
{
    return static_cast<pid_t>(syscall(SYS_gettid));
}

/// A member of an object that is not there. Nothing was written, and no data of the process are
/// damaged by it, which is why it can go on; of other faults nobody knows.
bool followsNothing(siginfo_t const & info)
{
    constexpr std::uintptr_t FirstPage = 4096;
    return info.si_code == SEGV_MAPERR &&
           reinterpret_cast<std::uintptr_t>(info.si_addr) < FirstPage;
}

void onFault(int signal, siginfo_t * info, void *)
{
    bool const isSegmentation = signal == SIGSEGV;
    bool const isHarmless = isSegmentation ? followsNothing(*info) : info->si_code == FPE_INTDIV;
    if (!isHarmless || s_Thread != thisThread() || !Standard_ErrorHandler::IsInTryBlock()) {
        // The instruction is executed again, and its fault meets the old handler. One that was sent
        // is sent again.
        sigaction(signal, isSegmentation ? &s_OldSegmentation : &s_OldArithmetic, nullptr);
        if (info->si_code <= 0)
            raise(signal);
        return;
    }
    ++s_Count;
    if (isSegmentation)
        OSD_SIGSEGV::NewInstance("it followed a reference to nothing")->Jump();
    else
        Standard_DivideByZero::NewInstance("it divided by zero")->Jump();
}

} // namespace

KernelFaults::KernelFaults()
{
    struct sigaction action = {};
    action.sa_sigaction = onFault;
    // Nobody returns from a jump: the signal must not stay blocked.
    action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER;
    s_Thread = thisThread();
    s_Count = 0;
    sigaction(SIGSEGV, nullptr, &s_OldSegmentation);
    sigaction(SIGFPE, nullptr, &s_OldArithmetic);
    sigaction(SIGSEGV, &action, nullptr);
    sigaction(SIGFPE, &action, nullptr);
}

KernelFaults::~KernelFaults()
{
    sigaction(SIGSEGV, &s_OldSegmentation, nullptr);
    sigaction(SIGFPE, &s_OldArithmetic, nullptr);
    s_Thread = 0;
}

int KernelFaults::count() const
{
    return s_Count;
}

void callKernel(std::function<void()> const & work)
{
    OCC_CATCH_SIGNALS
    work();
}

} // namespace step
