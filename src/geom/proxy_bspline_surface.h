#ifndef KELD_TRANSL_GEOM_PROXY_BSPLINE_SURFACE_H
#define KELD_TRANSL_GEOM_PROXY_BSPLINE_SURFACE_H

#include "geom/proxy_surface.h"
#include "geom/scaling.h"
#include "geom/spline_data.h"

#include <keld-transl/geom/bspline_surface.h>

namespace geom {

class ProxyBSplineSurface final : public SurfaceKind<BSplineSurface, Surface::Type::BSpline>
{
public:
    ProxyBSplineSurface(SplineSurfaceData data, Surface::Type form, Parameterization u,
                        Parameterization v)
        : SurfaceKind(std::move(u), std::move(v)), m_Form(form), m_Data(std::move(data))
    {}

    SplineSurfaceData const & data() const { return m_Data; }

    Surface::Type getSurfaceForm() override { return m_Form; }
    void getSplineFormU(int & degree, bool & flagA, bool & flagB) override
    {
        m_Data.formU.get(degree, flagA, flagB);
    }
    void getSplineFormV(int & degree, bool & flagA, bool & flagB) override
    {
        m_Data.formV.get(degree, flagA, flagB);
    }
    bool isRational() override { return !m_Data.weights.empty(); }
    int getNumControlPointsU() override { return m_Data.pointCountU; }
    int getNumControlPointsV() override { return m_Data.pointCountV; }
    void getControlPoints(double * points) override { m_Data.points.copyTo(points); }
    void getWeights(double * weights) override { m_Data.weights.copyTo(weights); }
    int getNumKnotsU() override { return static_cast<int>(m_Data.formU.knots.size()); }
    int getNumKnotsV() override { return static_cast<int>(m_Data.formV.knots.size()); }
    void getKnotsU(double * knots, int * multiplicities) override
    {
        m_Data.formU.knots.copyTo(knots, multiplicities);
    }
    void getKnotsV(double * knots, int * multiplicities) override
    {
        m_Data.formV.knots.copyTo(knots, multiplicities);
    }

    void scaleBy(Scaling const & scaling)
    {
        for (auto & point : m_Data.points)
            scaling.position(point);
    }

private:
    Surface::Type m_Form;
    SplineSurfaceData m_Data;
};

} // namespace geom

#endif
