#ifndef KELD_TRANSL_GEOM_PROXY_POINT_H
#define KELD_TRANSL_GEOM_PROXY_POINT_H

#include "geom/scaling.h"

#include <keld-transl/geom/point.h>

namespace geom {

/// The point of `Point::create`; also the shape inside the entities that are points.
class ProxyPoint final : public Point
{
public:
    ProxyPoint(double x, double y, double z) : m_Coordinates{x, y, z} {}
    ~ProxyPoint() override = default;

    void getCoordinates(double & x, double & y, double & z) override
    {
        x = m_Coordinates[0];
        y = m_Coordinates[1];
        z = m_Coordinates[2];
    }

    void scaleBy(Scaling const & scaling) { scaling.position(m_Coordinates); }

private:
    Triple m_Coordinates;
};

} // namespace geom

#endif
