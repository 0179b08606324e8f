#ifndef KELD_TRANSL_TOPOLOGY_CURVE3D_H
#define KELD_TRANSL_TOPOLOGY_CURVE3D_H

#include <keld-transl/geom/curve.h>
#include <keld-transl/model/base.h>

namespace transl_tk {

/// The carrier of a curve in space, for all edges that run along it.
class KELD_TRANSL_EXPORT Curve3D : public Base
{
protected:
    Curve3D() = default;
    explicit Curve3D(int const & id) : Base(id) {}
    ~Curve3D() override;

public:
    Curve3D(Curve3D const &) = default;
    Curve3D & operator=(Curve3D const &) = default;

    /// Makes a carrier of the current sub-pool. Adopts `curve`, of any kind, when it succeeds.
    /// Null when `curve` is null or `id` is taken: the curve then stays the caller's.
    /// See `Base` for the rules of ids.
    static Curve3D * create(int const & id, geom::Curve * curve);
    static void destruct(Curve3D * carrier);

    int getEntityKind() override = 0;
    /// The curve, which stays the carrier's.
    virtual geom::Curve * getCurve() = 0;
};

} // namespace transl_tk

#endif
