#include "model/carrier.h"

#include <keld-transl/topology/curve3d.h>

namespace transl_tk {

namespace {

class ProxyCurve3D final : public Curve3D, public Pooled<ProxyCurve3D>
{
public:
    ProxyCurve3D(int id, geom::Curve * curve) : Curve3D(id), m_Curve(curve) {}
    ProxyCurve3D(ProxyCurve3D const &) = delete;
    ProxyCurve3D & operator=(ProxyCurve3D const &) = delete;
    ~ProxyCurve3D() override { geom::Curve::destruct(m_Curve); }

    int getEntityKind() override { return EntityKindCurve3D; }

    geom::Curve * getCurve() override { return m_Curve; }

private:
    geom::Curve * m_Curve;
};

} // namespace

Curve3D * Curve3D::create(int const & id, geom::Curve * curve)
{
    if (curve == nullptr)
        return nullptr;
    return createCarrier<ProxyCurve3D>(&SubPool::m_Curves3D, id, curve);
}

void Curve3D::destruct(Curve3D * carrier)
{
    delete carrier;
}

Curve3D::~Curve3D()
{
    leaveStore(&SubPool::m_Curves3D, this);
}

} // namespace transl_tk
