#ifndef KELD_TRANSL_GEOM_PROXY_LINE_H
#define KELD_TRANSL_GEOM_PROXY_LINE_H

#include "geom/placement.h"
#include "geom/proxy_curve.h"
#include "geom/scaling.h"

#include <keld-transl/geom/line.h>

namespace geom {

class ProxyLine final : public CurveKind<Line, Curve::Type::Line>
{
public:
    ProxyLine(Triple const & point, Triple const & direction, Parameterization parameterization)
        : CurveKind(std::move(parameterization)), m_Point(point), m_Direction(direction)
    {}

    void getPoint(double (&point)[3]) override { fill(point, m_Point); }
    void getDirection(double (&direction)[3]) override { fill(direction, m_Direction); }

    void scaleBy(Scaling const & scaling) { scaling.position(m_Point); }

private:
    Triple m_Point;
    Triple m_Direction;
};

} // namespace geom

#endif
