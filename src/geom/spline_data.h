#ifndef KELD_TRANSL_GEOM_SPLINE_DATA_H
#define KELD_TRANSL_GEOM_SPLINE_DATA_H

#include "geom/array.h"
#include "geom/placement.h"

#include <array>
#include <cstddef>

namespace geom {

/// The distinct knots of one direction, each with its multiplicity; one block of memory.
class Knots
{
public:
    Knots() noexcept = default;

    /// As many knots, values and multiplicities unset.
    explicit Knots(long long count);

    std::size_t size() const noexcept { return m_Block.size() / KnotSize; }

    double * values() noexcept;
    double const * values() const noexcept;
    int * multiplicities() noexcept;
    int const * multiplicities() const noexcept;

    void copyFrom(double const * values, int const * multiplicities);
    void copyTo(double * values, int * multiplicities) const;

    /// Turns the direction. Each value is subtracted from the difference of the ends, not from
    /// their sum: a range that does not begin at 0 moves.
    void reverse();

private:
    static constexpr std::size_t KnotSize = sizeof(double) + sizeof(int);

    Array<std::byte> m_Block; ///< all values, then all multiplicities
};

/// What a spline has for each of its directions.
struct SplineForm
{
    int degree = 0;
    bool flagA = false;
    bool flagB = false;
    Knots knots;

    void get(int & degreeOut, bool & flagAOut, bool & flagBOut) const;
};

/// All that a spline curve with points of `Dimension` components holds.
template <std::size_t Dimension> struct SplineData
{
    using Point = std::array<double, Dimension>;

    SplineForm form;
    Array<Point> points;
    Array<double> weights; ///< one for each point, or none when the curve is not rational
};

/// All that a spline surface holds.
struct SplineSurfaceData
{
    SplineForm formU;
    SplineForm formV;
    int pointCountU = 0;
    int pointCountV = 0;
    Array<Triple> points;  ///< as many as the product of the counts
    Array<double> weights; ///< one for each point, or none when the surface is not rational
};

/// A form with copies of the arrays.
SplineForm copiedForm(int degree, bool flagA, bool flagB, int knotCount, int const * multiplicities,
                      double const * knots);

/// An array with copies of `count` elements; `values` is read only when there are any.
template <class Element> Array<Element> copiedArray(double const * values, long long count)
{
    Array<Element> array(count);
    array.copyFrom(values);
    return array;
}

/// The weights of `count` points; none when `weights` is null.
inline Array<double> copiedWeights(double const * weights, long long count)
{
    return weights != nullptr ? copiedArray<double>(weights, count) : Array<double>();
}

} // namespace geom

#endif
