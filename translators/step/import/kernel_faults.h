#ifndef KELD_STEP_IMPORT_KERNEL_FAULTS_H
#define KELD_STEP_IMPORT_KERNEL_FAULTS_H

#include <functional>

namespace step {

/// While it lives, a reference to nothing that the kernel follows on this thread, and a whole
/// number that it divides by zero, are a Standard_Failure wherever the kernel or `callKernel` waits
/// for one. Any other fault, and one where nobody waits, goes the way it went before.
///
/// One at a time in a process.
class KernelFaults
{
public:
    KernelFaults();
    KernelFaults(KernelFaults const &) = delete;
    KernelFaults & operator=(KernelFaults const &) = delete;
    ~KernelFaults();

    /// How many faults became failures.
    int count() const;
};

/// Calls `work`. Where a fault of it became a failure, `work` has ended without its destructors,
/// and what it held stays in memory.
void callKernel(std::function<void()> const & work);

} // namespace step

#endif
