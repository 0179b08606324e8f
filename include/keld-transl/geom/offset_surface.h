#ifndef KELD_TRANSL_GEOM_OFFSET_SURFACE_H
#define KELD_TRANSL_GEOM_OFFSET_SURFACE_H

#include <keld-transl/geom/surface.h>

namespace geom {

/// What lies at a distance from another surface, the base. It owns nothing: the base must live as
/// long as it is asked for, and whoever made it frees it.
class KELD_TRANSL_EXPORT OffsetSurface : public Surface
{
protected:
    OffsetSurface() = default;
    ~OffsetSurface() override = default;

public:
    OffsetSurface(OffsetSurface const &) = default;
    OffsetSurface & operator=(OffsetSurface const &) = default;

    /// `base` may be null.
    static OffsetSurface * create(Surface * const base, double const & distance,
                                  Parameterization const & u, Parameterization const & v);

    virtual Surface * getBaseSurface() = 0;
    virtual double getDistance() = 0;
};

} // namespace geom

#endif
