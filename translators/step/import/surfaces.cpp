#include "import/surfaces.h"

#include "import/curves.h"
#include "import/placement.h"
#include "import/spline_arrays.h"

#include <keld-transl/geom/bspline_surface.h>
#include <keld-transl/geom/cone.h>
#include <keld-transl/geom/cylinder.h>
#include <keld-transl/geom/offset_surface.h>
#include <keld-transl/geom/plane.h>
#include <keld-transl/geom/sphere.h>
#include <keld-transl/geom/surface_of_linear_extrusion.h>
#include <keld-transl/geom/surface_of_revolution.h>
#include <keld-transl/geom/torus.h>

#include <GeomConvert.hxx>
#include <GeomConvert_ApproxSurface.hxx>
#include <Geom_BSplineSurface.hxx>
#include <Geom_BezierSurface.hxx>
#include <Geom_ConicalSurface.hxx>
#include <Geom_CylindricalSurface.hxx>
#include <Geom_Hyperbola.hxx>
#include <Geom_OffsetSurface.hxx>
#include <Geom_Parabola.hxx>
#include <Geom_Plane.hxx>
#include <Geom_RectangularTrimmedSurface.hxx>
#include <Geom_SphericalSurface.hxx>
#include <Geom_SurfaceOfLinearExtrusion.hxx>
#include <Geom_SurfaceOfRevolution.hxx>
#include <Geom_SweptSurface.hxx>
#include <Geom_ToroidalSurface.hxx>
#include <Precision.hxx>
#include <cmath>
#include <vector>

namespace step {

namespace {

using Bounds = SurfaceRange;

Bounds boundsOf(Geom_Surface const & surface)
{
    Bounds bounds;
    surface.Bounds(bounds.u1, bounds.u2, bounds.v1, bounds.v2);
    return bounds;
}

/// The bounds of a swept surface. Where its profile is endless, `given` takes their place.
Bounds profileBounds(Handle(Geom_Surface) const & surface, SurfaceRange const & given)
{
    return isEndless(surface) ? given : boundsOf(*surface);
}

bool isEndlessConic(Handle(Geom_Curve) const & curve)
{
    return !Handle(Geom_Parabola)::DownCast(curve).IsNull() ||
           !Handle(Geom_Hyperbola)::DownCast(curve).IsNull();
}

geom::Parameterization uRangeOf(Bounds const & bounds)
{
    return rangeOf(bounds.u1, bounds.u2);
}

geom::Parameterization vRangeOf(Bounds const & bounds)
{
    return rangeOf(bounds.v1, bounds.v2);
}

geom::Parameterization turn()
{
    return angularRangeOf(0, 2 * M_PI);
}

/// The elementary surfaces of the toolkit have right-handed placements. Of a left-handed one the
/// first two axes stay and the third one turns round, and v with it.
SurfaceResult mirrored(SurfaceResult result, gp_Ax3 const & axes, char const * what, double shift)
{
    if (!axes.Direct()) {
        result.uv = {true, -1, shift};
        result.turned = true;
        result.changed = std::string("left-handed ") + what + " as right-handed one, v turned";
    }
    return result;
}

SurfaceResult planeFrom(Geom_Plane const & plane)
{
    // The parameters of a plane run along the first two axes, whichever way the third one points.
    Placement const place(plane.Position());
    return {geom::Plane::create(place.location.values, place.first.values, place.second.values,
                                place.location.values, {}, {})};
}

SurfaceResult cylinderFrom(Geom_CylindricalSurface const & cylinder)
{
    Placement const place(cylinder.Position());
    return mirrored(
        {geom::Cylinder::create(place.location.values, place.first.values, place.second.values,
                                place.location.values, cylinder.Radius(), turn(), {})},
        cylinder.Position(), "cylinder", 0);
}

SurfaceResult coneFrom(Geom_ConicalSurface const & cone)
{
    Placement const place(cone.Position());
    double const angle = cone.Position().Direct() ? cone.SemiAngle() : -cone.SemiAngle();
    return mirrored(
        {geom::Cone::create(place.location.values, place.first.values, place.second.values,
                            place.location.values, cone.RefRadius(), angle, turn(), {})},
        cone.Position(), "cone", 0);
}

SurfaceResult sphereFrom(Geom_SphericalSurface const & sphere)
{
    Placement const place(sphere.Position());
    return mirrored({geom::Sphere::create(place.location.values, place.first.values,
                                          place.second.values, place.location.values,
                                          sphere.Radius(), turn(), rangeOf(-M_PI_2, M_PI_2))},
                    sphere.Position(), "sphere", 0);
}

SurfaceResult torusFrom(Geom_ToroidalSurface const & torus)
{
    Placement const place(torus.Position());
    return mirrored({geom::Torus::create(place.location.values, place.first.values,
                                         place.second.values, place.location.values,
                                         torus.MajorRadius(), torus.MinorRadius(), turn(), turn())},
                    torus.Position(), "torus", 2 * M_PI);
}

SurfaceResult splineFrom(Geom_BSplineSurface const & surface)
{
    Knots const u = uKnotsOf(surface);
    Knots const v = vKnotsOf(surface);
    SplineArrays const arrays = arraysOf(surface);
    Bounds const bounds = boundsOf(surface);
    return {geom::BSplineSurface::create(
        surface.UDegree(), surface.IsUPeriodic(), surface.IsUClosed(), surface.VDegree(),
        surface.IsVPeriodic(), surface.IsVClosed(), u.count(), u.multiplicities.data(),
        u.values.data(), v.count(), v.multiplicities.data(), v.values.data(), surface.NbUPoles(),
        surface.NbVPoles(), arrays.points.data(), arrays.weightsOrNull(), uRangeOf(bounds),
        vRangeOf(bounds), geom::Surface::BSpline)};
}

SurfaceResult revolutionFrom(Geom_SurfaceOfRevolution const & surface, Bounds const & bounds)
{
    CurveResult const meridian = makeCurve(surface.BasisCurve(), bounds.v1, bounds.v2);
    if (meridian.curve == nullptr)
        return {};
    SurfaceResult result = {geom::SurfaceOfRevolution::create(
        Triple(surface.Axis().Location()).values, Triple(surface.Axis().Direction()).values,
        meridian.curve, turn(), vRangeOf(bounds))};
    if (!meridian.changed.empty())
        result.changed = "surface of revolution: " + meridian.changed;
    result.uv.exists = meridian.sameParameters;
    return result;
}

SurfaceResult extrusionFrom(Geom_SurfaceOfLinearExtrusion const & surface, Bounds const & bounds)
{
    CurveResult const profile = makeCurve(surface.BasisCurve(), bounds.u1, bounds.u2);
    if (profile.curve == nullptr)
        return {};
    SurfaceResult result = {geom::SurfaceOfLinearExtrusion::create(
        profile.curve, Triple(surface.Direction()).values, uRangeOf(bounds), {})};
    if (!profile.changed.empty())
        result.changed = "surface of linear extrusion: " + profile.changed;
    result.uv.exists = profile.sameParameters;
    return result;
}

/// Bases of offset surfaces: no surface owns them, and they must live as long as the model.
std::vector<geom::Surface *> & bases()
{
    static auto & all = *new std::vector<geom::Surface *>;
    return all;
}

SurfaceResult offsetFrom(Geom_OffsetSurface const & surface, SurfaceRange const & range)
{
    SurfaceResult result = makeSurface(surface.BasisSurface(), range);
    if (result.surface == nullptr)
        return result;
    bases().push_back(result.surface);
    Bounds const bounds = boundsOf(surface);
    double const distance = result.turned ? -surface.Offset() : surface.Offset();
    result.surface =
        geom::OffsetSurface::create(result.surface, distance, uRangeOf(bounds), vRangeOf(bounds));
    if (!result.changed.empty())
        result.changed = "offset surface: " + result.changed;
    return result;
}

SurfaceResult approximated(Handle(Geom_Surface) const & surface)
{
    constexpr int Segments = 100;
    constexpr int Degree = 9;
    Bounds const bounds = boundsOf(*surface);
    if (Precision::IsInfinite(bounds.u1) || Precision::IsInfinite(bounds.u2) ||
        Precision::IsInfinite(bounds.v1) || Precision::IsInfinite(bounds.v2))
        return {};
    GeomConvert_ApproxSurface approximation(surface, Precision::Confusion(), GeomAbs_C2, GeomAbs_C2,
                                            Degree, Degree, Segments, 1);
    if (!approximation.HasResult())
        return {};
    SurfaceResult result = splineFrom(*approximation.Surface());
    result.changed = "other surface approximated by a B-spline surface";
    return result;
}

} // namespace

bool isEndless(Handle(Geom_Surface) const & surface)
{
    if (auto const trimmed = Handle(Geom_RectangularTrimmedSurface)::DownCast(surface))
        return isEndless(trimmed->BasisSurface());
    if (auto const offset = Handle(Geom_OffsetSurface)::DownCast(surface))
        return isEndless(offset->BasisSurface());
    auto const swept = Handle(Geom_SweptSurface)::DownCast(surface);
    return !swept.IsNull() && isEndlessConic(swept->BasisCurve());
}

SurfaceResult makeSurface(Handle(Geom_Surface) const & given, SurfaceRange const & range)
{
    Handle(Geom_Surface) surface = given;
    while (auto const trimmed = Handle(Geom_RectangularTrimmedSurface)::DownCast(surface))
        surface = trimmed->BasisSurface();

    if (auto const plane = Handle(Geom_Plane)::DownCast(surface))
        return planeFrom(*plane);
    if (auto const cylinder = Handle(Geom_CylindricalSurface)::DownCast(surface))
        return cylinderFrom(*cylinder);
    if (auto const cone = Handle(Geom_ConicalSurface)::DownCast(surface))
        return coneFrom(*cone);
    if (auto const sphere = Handle(Geom_SphericalSurface)::DownCast(surface))
        return sphereFrom(*sphere);
    if (auto const torus = Handle(Geom_ToroidalSurface)::DownCast(surface))
        return torusFrom(*torus);
    if (auto const spline = Handle(Geom_BSplineSurface)::DownCast(surface))
        return splineFrom(*spline);
    if (auto const revolution = Handle(Geom_SurfaceOfRevolution)::DownCast(surface))
        return revolutionFrom(*revolution, profileBounds(surface, range));
    if (auto const extrusion = Handle(Geom_SurfaceOfLinearExtrusion)::DownCast(surface))
        return extrusionFrom(*extrusion, profileBounds(surface, range));
    if (auto const offset = Handle(Geom_OffsetSurface)::DownCast(surface))
        return offsetFrom(*offset, range);
    if (Handle(Geom_BezierSurface)::DownCast(surface)) {
        SurfaceResult result = splineFrom(*GeomConvert::SurfaceToBSplineSurface(surface));
        result.changed = "Bezier surface as B-spline surface";
        return result;
    }
    return approximated(surface);
}

} // namespace step
