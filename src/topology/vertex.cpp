#include "geom/owned.h"
#include "model/carrier.h"

#include <keld-transl/topology/vertex.h>

namespace transl_tk {

namespace {

class ProxyVertex1D final : public Vertex, public Pooled<ProxyVertex1D>
{
public:
    ProxyVertex1D(int id, double parameter) : Vertex(id), m_Parameter(parameter) {}
    ~ProxyVertex1D() override = default;

    int getEntityKind() override { return EntityKindVertex; }

    void getGeometry(geom::Point *& point, double & parameter) override
    {
        point = nullptr;
        parameter = m_Parameter;
    }

private:
    double m_Parameter;
};

class ProxyVertex3D final : public Vertex, public Pooled<ProxyVertex3D>
{
public:
    ProxyVertex3D(int id, geom::Point * point) : Vertex(id), m_Point(point) {}
    ProxyVertex3D(ProxyVertex3D const &) = delete;
    ProxyVertex3D & operator=(ProxyVertex3D const &) = delete;
    ~ProxyVertex3D() override { geom::Point::destruct(m_Point); }

    int getEntityKind() override { return EntityKindVertex; }

    void getGeometry(geom::Point *& point, double & parameter) override
    {
        point = m_Point;
        parameter = 0.0;
    }

private:
    geom::Point * m_Point;
};

} // namespace

Vertex * Vertex::create(int const & id, double const & parameter)
{
    return createCarrier<ProxyVertex1D>(&SubPool::m_Vertices, id, parameter);
}

Vertex * Vertex::create(int const & id, geom::Point * point)
{
    if (point == nullptr)
        return nullptr;
    return createCarrier<ProxyVertex3D>(&SubPool::m_Vertices, id, point);
}

void Vertex::destruct(Vertex * vertex)
{
    delete vertex;
}

Vertex::~Vertex()
{
    leaveStore(&SubPool::m_Vertices, this);
}

} // namespace transl_tk
