#include "import/placement.h"

#include <Precision.hxx>
#include <cmath>

namespace step {

geom::Parameterization rangeOf(double first, double last)
{
    if (Precision::IsInfinite(first) || Precision::IsInfinite(last))
        return {};
    return {geom::SteppedA, first, last, 2, last - first};
}

geom::Parameterization angularRangeOf(double first, double last)
{
    constexpr double TwoPi = 2 * M_PI;
    if (first == 0 && std::abs(last - TwoPi) < Precision::Angular())
        return {geom::Angular, 0, 0, 0, 0};
    return rangeOf(first, last);
}

} // namespace step
