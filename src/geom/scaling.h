#ifndef KELD_TRANSL_GEOM_SCALING_H
#define KELD_TRANSL_GEOM_SCALING_H

#include "geom/placement.h"

#include <cstddef>
#include <typeinfo>

namespace geom {

class Curve;

/// What the `scale` functions do to a shape: lengths grow by a factor, positions move about a fixed
/// centre.
class Scaling
{
public:
    Scaling(double factor, double centreX, double centreY, double centreZ)
        : m_Factor(factor), m_Centre{centreX, centreY, centreZ}
    {}

    void length(double & length) const { length *= m_Factor; }

    void position(Triple & position) const { scale<3>(position); }

    /// Moves a position in x and y and leaves its z.
    void positionInXY(Triple & position) const { scale<2>(position); }

private:
    /// Three passes, each of which rounds: a folded form of the same sum has other last bits.
    template <std::size_t Components> void scale(Triple & position) const
    {
        for (std::size_t i = 0; i < Components; ++i)
            position[i] -= m_Centre[i];
        for (std::size_t i = 0; i < Components; ++i)
            position[i] *= m_Factor;
        for (std::size_t i = 0; i < Components; ++i)
            position[i] += m_Centre[i];
    }

    double m_Factor;
    Triple m_Centre;
};

/// Scales a curve that a surface holds; null is passed over.
void scaleCurve(Curve * curve, Scaling const & scaling);

/// `shape` as the hidden class that the library makes of its kind; null when a host made it of a
/// class of its own.
template <class Proxy, class Shape> Proxy * own(Shape * shape)
{
    return typeid(*shape) == typeid(Proxy) ? static_cast<Proxy *>(shape) : nullptr;
}

} // namespace geom

#endif
