#include "model/entity.h"

#include <keld-transl/topology/uv_curve.h>

namespace transl_tk {

namespace {

class ProxyUVCurve final : public UVCurve, public Pooled<ProxyUVCurve>
{
public:
    ProxyUVCurve(int id, geom::UVCurve * curve) : UVCurve(id), m_Curve(curve) {}
    ProxyUVCurve(ProxyUVCurve const &) = delete;
    ProxyUVCurve & operator=(ProxyUVCurve const &) = delete;
    ~ProxyUVCurve() override { geom::UVCurve::destruct(m_Curve); }

    int getEntityKind() override { return EntityKindUVCurve; }

    geom::UVCurve * getCurve() override { return m_Curve; }

private:
    geom::UVCurve * m_Curve;
};

} // namespace

UVCurve * UVCurve::create(int const & id, geom::UVCurve * curve)
{
    return createEntity<ProxyUVCurve>(&SubPool::m_UVCurves, id, curve);
}

void UVCurve::destruct(UVCurve * carrier)
{
    delete carrier;
}

UVCurve::~UVCurve()
{
    leaveStore(&SubPool::m_UVCurves, this);
}

} // namespace transl_tk
