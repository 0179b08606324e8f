#ifndef KELD_TRANSL_TOPOLOGY_UV_CURVE_H
#define KELD_TRANSL_TOPOLOGY_UV_CURVE_H

#include <keld-transl/geom/uv_curve.h>
#include <keld-transl/model/base.h>

namespace transl_tk {

/// The carrier of a curve in parameter space, for one fin.
class KELD_TRANSL_EXPORT UVCurve : public Base
{
protected:
    UVCurve() = default;
    explicit UVCurve(int const & id) : Base(id) {}
    ~UVCurve() override;

public:
    UVCurve(UVCurve const &) = default;
    UVCurve & operator=(UVCurve const &) = default;

    /// Makes a carrier of the current sub-pool. Adopts `curve`, which may be null, when it
    /// succeeds. Null when `id` is taken: the curve then stays the caller's. See `Base` for the
    /// rules of ids.
    static UVCurve * create(int const & id, geom::UVCurve * curve);
    static void destruct(UVCurve * carrier);

    int getEntityKind() override = 0;
    /// The curve, which stays the carrier's.
    virtual geom::UVCurve * getCurve() = 0;
};

} // namespace transl_tk

#endif
