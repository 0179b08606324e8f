#ifndef KELD_TRANSL_GEOM_PROXY_LINE_STRIP_H
#define KELD_TRANSL_GEOM_PROXY_LINE_STRIP_H

#include "geom/placement.h"
#include "geom/proxy_curve.h"
#include "geom/scaling.h"

#include <keld-transl/geom/line_strip.h>

#include <vector>

namespace geom {

class ProxyLineStrip final : public CurveKind<LineStrip, Curve::Type::LineStrip>
{
public:
    ProxyLineStrip(std::vector<Triple> points, Parameterization parameterization)
        : CurveKind(std::move(parameterization)), m_Points(std::move(points))
    {}

    std::vector<Triple> const & points() const { return m_Points; }

    void addPoint(double const & x, double const & y, double const & z) override
    {
        m_Points.push_back({x, y, z});
    }
    int getNumPoints() override { return static_cast<int>(m_Points.size()); }
    void getPoints(double * points) override;
    void forEachPoint(bool (*callback)(int &, double &, double &, double &, void *),
                      void * user) override;

    /// The points of a strip stay where they are.
    void scaleBy(Scaling const &) {}

private:
    std::vector<Triple> m_Points;
};

} // namespace geom

#endif
