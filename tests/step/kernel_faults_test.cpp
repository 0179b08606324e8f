// What becomes of faults inside of the kernel.
#include "import/kernel_faults.h"
#include "support/child.h"
#include "support/leftovers.h"

#include <Standard_Failure.hxx>
#include <csignal>
#include <cstdint>
#include <gtest/gtest.h>
#include <sys/resource.h>

namespace {

using step::callKernel;
using step::KernelFaults;

/// Reads what stands at an address.
void readAt(std::uintptr_t address)
{
    auto * volatile place = reinterpret_cast<int volatile *>(address);
    static_cast<void>(*place);
}

constexpr std::uintptr_t MemberOfNothing = 8;
constexpr std::uintptr_t Elsewhere = 0x10000;

/// What ends a process that does `work`: minus the signal's number. The fault meets the default
/// handler of the system.
template <class Work> int endOf(Work && work)
{
    tests::Child child([&] {
        struct rlimit const noCore = {0, 0};
        ::setrlimit(RLIMIT_CORE, &noCore);
        for (int signal : {SIGSEGV, SIGFPE})
            std::signal(signal, SIG_DFL);
        work();
        return 0;
    });
    return child.wait();
}

TEST(KernelFaults, AMemberOfNothingIsAFailure)
{
    tests::LeftoverGuard const guard;
    KernelFaults const faults;
    EXPECT_THROW(callKernel([] { readAt(MemberOfNothing); }), Standard_Failure);
    EXPECT_EQ(1, faults.count());
}

TEST(KernelFaults, EachFaultIsAFailure)
{
    KernelFaults const faults;
    for (int i = 0; i < 3; ++i)
        EXPECT_THROW(callKernel([] { readAt(MemberOfNothing); }), Standard_Failure);
    EXPECT_EQ(3, faults.count());
}

TEST(KernelFaults, TheInnermostCallGetsTheFailure)
{
    KernelFaults const faults;
    bool inner = false;
    callKernel([&] {
        try {
            callKernel([] { readAt(MemberOfNothing); });
        } catch (Standard_Failure const &) {
            inner = true;
        }
    });
    EXPECT_TRUE(inner);
}

TEST(KernelFaults, AFaultElsewhereEndsTheProcess)
{
    EXPECT_EQ(-SIGSEGV, endOf([] {
        KernelFaults const faults;
        callKernel([] { readAt(Elsewhere); });
    }));
}

TEST(KernelFaults, AFaultThatNobodyWaitsForEndsTheProcess)
{
    EXPECT_EQ(-SIGSEGV, endOf([] {
        KernelFaults const faults;
        readAt(MemberOfNothing);
    }));
}

TEST(KernelFaults, ASignalThatWasSentEndsTheProcess)
{
    EXPECT_EQ(-SIGSEGV, endOf([] {
        KernelFaults const faults;
        callKernel([] { std::raise(SIGSEGV); });
    }));
    EXPECT_EQ(-SIGFPE, endOf([] {
        KernelFaults const faults;
        callKernel([] { std::raise(SIGFPE); });
    }));
}

TEST(KernelFaults, AfterwardsFaultsGoTheirOldWay)
{
    EXPECT_EQ(-SIGSEGV, endOf([] {
        {
            KernelFaults const faults;
        }
        callKernel([] { readAt(MemberOfNothing); });
    }));
}

} // namespace
