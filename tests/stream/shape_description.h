#ifndef KELD_TESTS_STREAM_SHAPE_DESCRIPTION_H
#define KELD_TESTS_STREAM_SHAPE_DESCRIPTION_H

#include "support/shapes.h"

#include <vector>

namespace tests {

/// All that a shape is made of, in plain lists, whatever its kind.
struct ShapeDescription
{
    /// The kind; 0 for a shape that is not there.
    int tag = 0;
    std::vector<geom::Parameterization> parameterizations;
    /// Degrees, flags, counts and multiplicities.
    std::vector<int> numbers;
    /// Coordinates, radii, knots and weights.
    std::vector<double> values;
    std::vector<ShapeDescription> inner;

    /// Whether all values are the same bit for bit.
    bool operator==(ShapeDescription const & other) const;
};

/// Shapes that are made of descriptions, and those that they refer to without owning them.
class ShapeMaker
{
public:
    /// The result is the caller's; null for the kind 0.
    geom::Curve * curve(ShapeDescription const & description);
    geom::Surface * surface(ShapeDescription const & description);
    static geom::UVCurve * uvCurve(ShapeDescription const & description);

private:
    std::vector<Owned<geom::Curve>> m_Members;
    std::vector<Owned<geom::Surface>> m_Bases;
};

/// What the getters of a shape tell about it. Of a placement the first three arrays.
ShapeDescription describe(geom::Curve * curve);
ShapeDescription describe(geom::Surface * surface);
ShapeDescription describe(geom::UVCurve & curve);

} // namespace tests

#endif
