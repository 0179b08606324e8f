#include "geom/placement.h"

namespace geom {

[[gnu::noinline]] Placement placed(double const (&location)[3], double const (&first)[3],
                                   double const (&second)[3])
{
    return {std::to_array(location),
            std::to_array(first),
            std::to_array(second),
            {first[1] * second[2] - first[2] * second[1],
             first[2] * second[0] - first[0] * second[2],
             first[0] * second[1] - first[1] * second[0]}};
}

} // namespace geom
