#ifndef KELD_TRANSL_GEOM_COMPOSITE_CURVE_H
#define KELD_TRANSL_GEOM_COMPOSITE_CURVE_H

#include <keld-transl/geom/curve.h>

namespace geom {

/// A view of curves in a row. It owns none of them: they must live as long as it is walked, and
/// whoever made them frees them.
class KELD_TRANSL_EXPORT CompositeCurve : public Curve
{
protected:
    CompositeCurve() = default;
    ~CompositeCurve() override = default;

public:
    CompositeCurve(CompositeCurve const &) = default;
    CompositeCurve & operator=(CompositeCurve const &) = default;

    /// Copies `count` pointers; null pointers among them are kept.
    static CompositeCurve * create(Curve ** curves, unsigned int const & count,
                                   Parameterization const & parameterization);

    /// Calls `callback` for every member in order. Stops at the first false and returns false;
    /// otherwise true.
    virtual bool forEachCurve(bool (*callback)(Curve * curve, void * user), void * user) = 0;
};

} // namespace geom

#endif
