#ifndef STEP_ASSEMBLY_MEASURE_H
#define STEP_ASSEMBLY_MEASURE_H

#include <string>

namespace vise {

/// What a STEP file holds. Products and what they are made of count once, however often they are
/// placed; volume, area and centre are of all that is placed, in millimetres.
struct Measures
{
    int assemblies = 0;
    int parts = 0;
    int instances = 0;
    int solids = 0;
    int shells = 0;
    int faces = 0;
    int edges = 0; ///< without the degenerate ones at poles
    int vertices = 0;
    double volume = 0;
    double area = 0;
    double centre[3] = {0, 0, 0}; ///< of the volume
};

/// Reads a file with the kernel alone. Throws BuildFailure.
Measures measure(std::string const & path);

void print(Measures const & measures);

/// Prints both side by side, and whether they agree: counts exactly, volume and area to a
/// millionth, the centre to a thousandth of a millimetre.
bool compare(Measures const & first, Measures const & second);

} // namespace vise

#endif
