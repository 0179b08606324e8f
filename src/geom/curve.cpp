#include "geom/ownerless.h"
#include "geom/scaling.h"

namespace geom {

Curve::~Curve()
{
    forgetOwnerless(this);
}

void Curve::destruct(Curve * curve)
{
    if (curve == nullptr)
        return;
    delete curve->getTrimPoints();
    delete curve;
}

void Curve::scale(Curve * curve, double const & factor, double const & centreX,
                  double const & centreY, double const & centreZ)
{
    scaleCurve(curve, Scaling(factor, centreX, centreY, centreZ));
}

trimmingPoints * Curve::getTrimPoints() const
{
    return m_TrimPoints;
}

void Curve::setTrimPoints(trimmingPoints * points)
{
    m_TrimPoints = points;
}

} // namespace geom
