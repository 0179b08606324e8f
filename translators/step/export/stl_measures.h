#ifndef KELD_STEP_EXPORT_STL_MEASURES_H
#define KELD_STEP_EXPORT_STL_MEASURES_H

#include "export/model_facets.h"

#include <Bnd_Box.hxx>
#include <string>
#include <vector>

namespace step {

/// What is counted and measured of triangles, so that those of a file can be compared.
struct StlMeasures
{
    void add(Triangle const & triangle);

    long long count = 0;
    double area = 0;
    double volume = 0;
    Bnd_Box box;
};

/// Measures the triangles of an STL file of either form. Nothing is added for what is cut.
StlMeasures measuresOfStl(std::string const & path, bool ascii);

/// A sentence for each thing in which `found` differs from `expected`.
std::vector<std::string> differences(StlMeasures const & expected, StlMeasures const & found);

} // namespace step

#endif
