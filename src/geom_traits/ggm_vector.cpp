#include "geom_traits/ggm_vector.h"

#include <keld-common/files.h>

#include <cmath>
#include <limits>

namespace ggm {

namespace {

void printCriticalError(int line, char const * error)
{
    vstudio_printf("VORN: critical error:\n\tfile %s: line %d (%s - %s)\n\t%s\n",
                   "geom_traits/ggm_vector.cpp", line, "ggm::Vector<3,float>::unit", __DATE__,
                   error);
}

} // namespace

void Vector<3, float>::unit()
{
    auto const [x, y, z] = components;
    float const length = std::sqrt(x * x + y * y + z * z);
    if (length == 0)
        printCriticalError(234, "Division by zero");
    for (float & component : components) {
        component /= length;
        if (component == std::numeric_limits<float>::infinity())
            printCriticalError(237, "Division produced infinity");
    }
}

} // namespace ggm
