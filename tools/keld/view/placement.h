#ifndef KELD_TOOLS_VIEW_PLACEMENT_H
#define KELD_TOOLS_VIEW_PLACEMENT_H

#include <array>
#include <cmath>

namespace keld::view {

using Triple = std::array<double, 3>;

template <class Number>
std::array<Number, 3> operator+(std::array<Number, 3> const & a, std::array<Number, 3> const & b)
{
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}

template <class Number>
std::array<Number, 3> operator-(std::array<Number, 3> const & a, std::array<Number, 3> const & b)
{
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

template <class Number>
std::array<Number, 3> operator*(Number factor, std::array<Number, 3> const & a)
{
    return {factor * a[0], factor * a[1], factor * a[2]};
}

template <class Number> Number dot(std::array<Number, 3> const & a, std::array<Number, 3> const & b)
{
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

template <class Number>
std::array<Number, 3> cross(std::array<Number, 3> const & a, std::array<Number, 3> const & b)
{
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

/// Where the three axes and the origin go.
struct Placement
{
    std::array<Triple, 3> axes = {Triple{1, 0, 0}, Triple{0, 1, 0}, Triple{0, 0, 1}};
    Triple origin = {0, 0, 0};

    Triple turned(Triple const & direction) const
    {
        return direction[0] * axes[0] + direction[1] * axes[1] + direction[2] * axes[2];
    }

    Triple applied(Triple const & point) const { return turned(point) + origin; }

    /// What is placed by `inner` first.
    Placement operator*(Placement const & inner) const
    {
        return {{turned(inner.axes[0]), turned(inner.axes[1]), turned(inner.axes[2])},
                applied(inner.origin)};
    }

    /// Where normals go, but for their lengths and, of a mirrored placement, their sides.
    std::array<Triple, 3> normalAxes() const
    {
        return {cross(axes[1], axes[2]), cross(axes[2], axes[0]), cross(axes[0], axes[1])};
    }
};

} // namespace keld::view

#endif
