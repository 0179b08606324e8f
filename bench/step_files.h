#ifndef KELD_BENCH_STEP_FILES_H
#define KELD_BENCH_STEP_FILES_H

#include <string>
#include <vector>

namespace bench {

/// A STEP file that is read, and what its benchmarks are called.
struct StepFile
{
    std::string name;
    std::string path;
};

/// A folder of its own with STEP files of some 20 kB ("small"), 1.5 MB ("middle") and 12 MB
/// ("large"), while this lives: drilled and rounded plates and bodies with walls of splines, in
/// assemblies of two levels, with names and colours.
class StepFiles
{
public:
    StepFiles();
    StepFiles(StepFiles const &) = delete;
    StepFiles & operator=(StepFiles const &) = delete;
    ~StepFiles();

    std::string const & folder() const { return m_Folder; }

    /// Those made here, and the samples that other people made, where they are.
    std::vector<StepFile> all() const;

private:
    std::string m_Folder;
};

} // namespace bench

#endif
