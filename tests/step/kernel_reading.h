#ifndef KELD_TESTS_STEP_KERNEL_READING_H
#define KELD_TESTS_STEP_KERNEL_READING_H

#include <TopoDS_Shape.hxx>
#include <gp_Pnt.hxx>
#include <map>
#include <set>
#include <string>

namespace tests {

/// Entities of a file or a model, each counted once however often it is placed.
struct Counts
{
    std::size_t solids = 0;
    std::size_t faces = 0;
    std::size_t edges = 0;
    std::size_t vertices = 0;

    friend bool operator==(Counts const &, Counts const &) = default;
};

void PrintTo(Counts const & counts, std::ostream * stream);

/// How many of each kind of entity a shape holds, by the names that the report has for them. What
/// is placed at several places, and what several others share, counts once.
std::map<std::string, long long> heldBy(TopoDS_Shape const & shape);

/// Volume, area and centre of a shape with all its places.
struct Measures
{
    double volume = 0;
    double area = 0;
    gp_Pnt centre; ///< of the area
};

Measures measuresOf(TopoDS_Shape const & shape);

/// A file as the kernel reads it in this process, by its plain readers.
struct KernelReading
{
    TopoDS_Shape shape;
    Counts counts;
    std::map<std::string, long long> held;
    Measures measures;
    std::multiset<std::string> productNames; ///< assemblies and parts, each once
};

KernelReading readByKernel(std::string const & path);

} // namespace tests

#endif
