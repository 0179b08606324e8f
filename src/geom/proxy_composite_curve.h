#ifndef KELD_TRANSL_GEOM_PROXY_COMPOSITE_CURVE_H
#define KELD_TRANSL_GEOM_PROXY_COMPOSITE_CURVE_H

#include "geom/array.h"
#include "geom/proxy_curve.h"
#include "geom/scaling.h"

#include <keld-transl/geom/composite_curve.h>

namespace geom {

class ProxyCompositeCurve final : public CurveKind<CompositeCurve, Curve::Type::CompositeCurve>
{
public:
    ProxyCompositeCurve(Array<Curve *> curves, Parameterization parameterization)
        : CurveKind(std::move(parameterization)), m_Curves(std::move(curves))
    {}

    bool forEachCurve(bool (*callback)(Curve *, void *), void * user) override;

    /// The members of a composite stay where they are.
    void scaleBy(Scaling const &) {}

private:
    Array<Curve *> m_Curves; ///< not owned
};

} // namespace geom

#endif
