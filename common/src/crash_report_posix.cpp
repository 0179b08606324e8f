#include "crash_dump.h"

#include <keld-common/crash_report.h>

#include <array>
#include <atomic>
#include <csetjmp>
#include <csignal>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

constexpr std::array<int, 5> s_Signals = {SIGSEGV, SIGBUS, SIGILL, SIGFPE, SIGABRT};

// A callback that waits for a lock of the code that faulted would keep the host waiting for ever:
// after this time the process ends, report or not.
constexpr unsigned s_SecondsForReport = 5;

// Room for the walk of the stack and for a callback that formats text.
constexpr size_t s_StackSize = 0x20000;
alignas(16) char s_Stack[s_StackSize];

crash_report_callback s_Callback = nullptr;
int s_Answer = 0;

std::atomic<pid_t> s_ReportingThread = 0;
std::atomic<int> s_Fault = 0;
volatile std::sig_atomic_t s_WalksStack = 0;
sigjmp_buf s_AfterWalk;

pid_t threadId()
{
    return static_cast<pid_t>(::syscall(SYS_gettid));
}

void setDefault(int signal)
{
    struct sigaction action = {};
    action.sa_handler = SIG_DFL;
    ::sigaction(signal, &action, nullptr);
    sigset_t signals;
    ::sigemptyset(&signals);
    ::sigaddset(&signals, signal);
    ::pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
}

[[noreturn]] void dieOf(int signal)
{
    setDefault(signal);
    ::raise(signal);
    // The kernel keeps the first process of a container alive through its own default signals.
    ::_exit(128 + signal);
}

void onTimeout(int)
{
    dieOf(s_Fault);
}

void limitTime(int signal)
{
    s_Fault = signal;
    struct sigaction action = {};
    action.sa_handler = onTimeout;
    ::sigaction(SIGALRM, &action, nullptr);
    sigset_t signals;
    ::sigemptyset(&signals);
    ::sigaddset(&signals, SIGALRM);
    ::pthread_sigmask(SIG_UNBLOCK, &signals, nullptr);
    ::alarm(s_SecondsForReport);
}

/// A second fault while the first one is being reported. On the reporting thread it is the walk of
/// a damaged stack, which is given up, or a fault of the report itself, which ends the process.
/// Another thread waits for the end that the first one brings.
void onSecondFault(int signal, pid_t reportingThread)
{
    if (reportingThread != threadId()) {
        for (;;)
            ::pause();
    }
    if (s_WalksStack != 0)
        siglongjmp(s_AfterWalk, 1);
    dieOf(signal);
}

void onFault(int signal, siginfo_t * info, void * context)
{
    pid_t reportingThread = 0;
    if (!s_ReportingThread.compare_exchange_strong(reportingThread, threadId()))
        onSecondFault(signal, reportingThread);
    limitTime(signal);
    if (keld_common::openDump()) {
        keld_common::dumpFault(signal, *info, context);
        if (sigsetjmp(s_AfterWalk, 0) == 0) {
            s_WalksStack = 1;
            keld_common::dumpStack();
        } else {
            keld_common::dumpText("the stack is damaged, its walk was given up\n");
        }
        s_WalksStack = 0;
        keld_common::closeDump();
    }
    for (int fatal : s_Signals)
        setDefault(fatal);
    if (s_Callback != nullptr)
        s_Callback(signal, s_Answer);
    dieOf(signal);
}

} // namespace

void install_crash_report_args(char const * directory, int, crash_report_callback callback,
                               int answer)
{
    keld_common::prepareDump(directory == nullptr ? "" : directory);
    s_Callback = callback;
    s_Answer = answer;

    stack_t stack = {};
    stack.ss_sp = s_Stack;
    stack.ss_size = s_StackSize;
    ::sigaltstack(&stack, nullptr);

    // No signal is blocked in the handler, its own neither: a fault while the stack is walked must
    // reach the handler again.
    struct sigaction action = {};
    action.sa_sigaction = onFault;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK | SA_NODEFER;
    for (int signal : s_Signals)
        ::sigaction(signal, &action, nullptr);
}

char const * crash_report_get_filename(void)
{
    return keld_common::dumpPath();
}
