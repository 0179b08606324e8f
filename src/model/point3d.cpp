#include "geom/proxy_point.h"
#include "model/entity.h"

#include <keld-transl/model/point3d.h>

namespace transl_tk {

namespace {

class ProxyPoint3D final : public Point3D, public Pooled<ProxyPoint3D>
{
public:
    ProxyPoint3D(int id, double x, double y, double z) : Point3D(id), m_Point(x, y, z) {}
    ~ProxyPoint3D() override = default;

    int getEntityKind() override { return EntityKindPoint3D; }

    void getCoordinates(double & x, double & y, double & z) override
    {
        m_Point.getCoordinates(x, y, z);
    }

private:
    geom::ProxyPoint m_Point;
};

} // namespace

Point3D * Point3D::create(int const & id, double const & x, double const & y, double const & z)
{
    return createEntity<ProxyPoint3D>(&SubPool::m_Points, id, x, y, z);
}

void Point3D::destruct(Point3D * point)
{
    delete point;
}

Point3D::~Point3D()
{
    leaveStore(&SubPool::m_Points, this);
}

} // namespace transl_tk
