#ifndef KELD_TRANSL_GEOM_PLACEMENT_H
#define KELD_TRANSL_GEOM_PLACEMENT_H

#include <algorithm>
#include <array>
#include <utility>

namespace geom {

using Triple = std::array<double, 3>;

/// Copies `values` into a caller's array.
inline void fill(double (&target)[3], Triple const & values)
{
    std::copy(values.begin(), values.end(), target);
}

/// A location and three axes.
struct Placement
{
    Triple location;
    Triple first;
    Triple second;
    Triple third;

    void get(double (&locationOut)[3], double (&firstOut)[3], double (&secondOut)[3],
             double (&thirdOut)[3]) const
    {
        fill(locationOut, location);
        fill(firstOut, first);
        fill(secondOut, second);
        fill(thirdOut, third);
    }
};

/// The placement of curves and surfaces: the third axis is the first one times the second one, of
/// whatever lengths and directions these are. One function for all that make shapes, so that they
/// agree in every bit, those of a NaN included.
Placement placed(double const (&location)[3], double const (&first)[3], double const (&second)[3]);

/// The half of a hidden class that all kinds with a placement share.
template <class Base> class Placed : public Base
{
public:
    template <class... Parameterizations>
    explicit Placed(Placement const & placement, Parameterizations &&... parameterizations)
        : Base(std::forward<Parameterizations>(parameterizations)...), m_Placement(placement)
    {}

    void getPlacement(double (&location)[3], double (&first)[3], double (&second)[3],
                      double (&third)[3]) final
    {
        m_Placement.get(location, first, second, third);
    }

protected:
    Placement m_Placement;
};

} // namespace geom

#endif
