#include <keld-transl/geom/trimming_points.h>

#include <algorithm>
#include <limits>
#include <memory>

namespace geom {

namespace {

constexpr std::size_t MostComponents = 4;

std::size_t components(bool hasFourth)
{
    return hasFourth ? MostComponents : MostComponents - 1;
}

/// Room for four components whatever is asked for: a later call with another `hasFourth` then
/// writes to a component that nobody reads, not past the array.
std::unique_ptr<double[]> unsetPoint()
{
    auto point = std::make_unique<double[]>(MostComponents);
    std::fill_n(point.get(), MostComponents, std::numeric_limits<double>::max());
    return point;
}

} // namespace

trimmingPoints::trimmingPoints(bool /*hasFourth*/)
{
    auto start = unsetPoint();
    m_EndPoint = unsetPoint().release();
    m_StartPoint = start.release();
}

trimmingPoints & trimmingPoints::operator=(trimmingPoints const & other) = default;

trimmingPoints::~trimmingPoints()
{
    delete[] m_StartPoint;
    delete[] m_EndPoint;
}

void trimmingPoints::setStartPoint(double * point, bool hasFourth)
{
    std::copy_n(point, components(hasFourth), m_StartPoint);
}

void trimmingPoints::setEndPoint(double * point, bool hasFourth)
{
    std::copy_n(point, components(hasFourth), m_EndPoint);
}

void trimmingPoints::setStartPointInPos(double value, unsigned short position, bool hasFourth)
{
    if (position < components(hasFourth))
        m_StartPoint[position] = value;
}

void trimmingPoints::setEndPointInPos(double value, unsigned short position, bool hasFourth)
{
    if (position < components(hasFourth))
        m_EndPoint[position] = value;
}

} // namespace geom
