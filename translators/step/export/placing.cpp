#include "export/placing.h"

#include <keld-transl/product/hierarchy.h>

#include <algorithm>
#include <cmath>
#include <gp_XYZ.hxx>

namespace step {

namespace {

/// Transforms come with rounded numbers, at times those of floats.
constexpr double Slack = 1e-6;

gp_Mat identity()
{
    gp_Mat result;
    result.SetIdentity();
    return result;
}

double distance(gp_Mat const & a, gp_Mat const & b)
{
    double result = 0;
    for (int row = 1; row <= 3; ++row) {
        for (int column = 1; column <= 3; ++column)
            result = std::max(result, std::abs(a.Value(row, column) - b.Value(row, column)));
    }
    return result;
}

double rounded(double scale)
{
    for (double const usual : {1.0, -1.0}) {
        if (std::abs(scale - usual) < Slack)
            return usual;
    }
    return scale;
}

} // namespace

bool isIdentity(gp_Mat const & map)
{
    return distance(map, identity()) == 0;
}

bool isIdentity(Placing const & placing)
{
    return isIdentity(placing.rest) && isIdentity(placing.move.VectorialPart()) &&
           placing.move.TranslationPart().SquareModulus() == 0;
}

std::optional<Placing> placingOf(transl_tk::Hierarchy & node, gp_Mat const & above)
{
    double m[16];
    node.getTransform(m);
    gp_Mat const own(m[0], m[4], m[8], m[1], m[5], m[9], m[2], m[6], m[10]);
    gp_XYZ position(m[12], m[13], m[14]);
    position.Multiply(above);
    gp_Mat const map = above * own;
    double const determinant = map.Determinant();
    constexpr double Flat = 1e-18;
    if (!std::all_of(m, m + 16, [](double value) { return std::isfinite(value); }) ||
        !std::isfinite(determinant) || std::abs(determinant) < Flat)
        return std::nullopt;

    Placing result;
    double const scale = std::cbrt(determinant);
    gp_Mat const turn = map.Divided(scale);
    if (distance(turn.Transposed() * turn, identity()) < Slack) {
        result.move.SetValues(turn(1, 1), turn(1, 2), turn(1, 3), 0, turn(2, 1), turn(2, 2),
                              turn(2, 3), 0, turn(3, 1), turn(3, 2), turn(3, 3), 0);
        result.move.SetScaleFactor(1);
        result.rest = identity().Multiplied(rounded(scale));
    } else {
        result.rest = map;
    }
    result.move.SetTranslationPart(position);
    return result;
}

} // namespace step
