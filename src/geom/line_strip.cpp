#include "geom/proxy_line_strip.h"

#include <cstring>

namespace geom {

LineStrip * LineStrip::create(Parameterization const & parameterization)
{
    return new ProxyLineStrip({}, parameterization);
}

void ProxyLineStrip::getPoints(double * points)
{
    if (!m_Points.empty())
        std::memcpy(points, m_Points.data(), m_Points.size() * sizeof(Triple));
}

void ProxyLineStrip::forEachPoint(bool (*callback)(int &, double &, double &, double &, void *),
                                  void * user)
{
    for (std::size_t i = 0; i < m_Points.size(); ++i) {
        auto & [x, y, z] = m_Points[i];
        int index = static_cast<int>(i);
        callback(index, x, y, z, user);
    }
}

} // namespace geom
