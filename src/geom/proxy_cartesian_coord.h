#ifndef KELD_TRANSL_GEOM_PROXY_CARTESIAN_COORD_H
#define KELD_TRANSL_GEOM_PROXY_CARTESIAN_COORD_H

#include "geom/placement.h"
#include "geom/scaling.h"

#include <keld-transl/geom/cartesian_coord.h>

namespace geom {

/// The coordinate system of `CartesianCoord::create`; also the shape inside the entity.
class ProxyCartesianCoord final : public CartesianCoord
{
public:
    explicit ProxyCartesianCoord(Placement const & axes) : m_Axes(axes) {}
    ~ProxyCartesianCoord() override = default;

    void getAxes(double (&origin)[3], double (&first)[3], double (&second)[3],
                 double (&third)[3]) override
    {
        m_Axes.get(origin, first, second, third);
    }

    void scaleBy(Scaling const & scaling) { scaling.position(m_Axes.location); }

private:
    Placement m_Axes;
};

} // namespace geom

#endif
