#include "geom/proxy_composite_curve.h"

#include <algorithm>

namespace geom {

CompositeCurve * CompositeCurve::create(Curve ** curves, unsigned int const & count,
                                        Parameterization const & parameterization)
{
    Array<Curve *> members(count);
    members.copyFrom(curves);
    return new ProxyCompositeCurve(std::move(members), parameterization);
}

bool ProxyCompositeCurve::forEachCurve(bool (*callback)(Curve *, void *), void * user)
{
    return std::all_of(m_Curves.begin(), m_Curves.end(),
                       [&](Curve * curve) { return callback(curve, user); });
}

} // namespace geom
