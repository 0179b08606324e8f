#ifndef KELD_BENCH_STEP_KERNEL_H
#define KELD_BENCH_STEP_KERNEL_H

#include <TDocStd_Document.hxx>
#include <string>

namespace bench {

/// The yardsticks: what the kernel does by itself, in this process.
class Kernel
{
public:
    Kernel();
    Kernel(Kernel const &) = delete;
    Kernel & operator=(Kernel const &) = delete;
    ~Kernel();

    /// Parses the STEP file `path` and transfers all of it, with what the translator asks for.
    /// Returns the seconds until the document is there; 0 when it could not be made.
    double read(std::string const & path);

private:
    Handle(TDocStd_Document) m_Document;
};

} // namespace bench

#endif
