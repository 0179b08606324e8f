#ifndef KELD_TESTS_SUPPORT_MODELS_H
#define KELD_TESTS_SUPPORT_MODELS_H

#include <keld-transl/model/point3d.h>
#include <keld-transl/model/pool.h>

#include <array>
#include <map>
#include <string>

namespace tests {

/// A pool with one sub-pool for the life of the object. Ends every sub-pool that a test adds.
class ScopedPool
{
public:
    explicit ScopedPool(std::string const & name = "test") { transl_tk::Pool::construct(name); }
    ScopedPool(ScopedPool const &) = delete;
    ScopedPool & operator=(ScopedPool const &) = delete;
    ~ScopedPool()
    {
        while (transl_tk::Pool::hasInstance())
            transl_tk::Pool::destruct();
    }
};

/// The current sub-pool.
inline transl_tk::SubPool & currentSubPool()
{
    return *transl_tk::Pool::getInstance()->currentSubPool();
}

using Coordinates = std::array<double, 3>;

inline Coordinates coordinatesOf(transl_tk::Base * point)
{
    Coordinates c{};
    static_cast<transl_tk::Point3D *>(point)->getCoordinates(c[0], c[1], c[2]);
    return c;
}

/// The points of the current sub-pool by id.
inline std::map<int, Coordinates> points()
{
    std::map<int, Coordinates> found;
    currentSubPool().m_Points.m_Entities.forEach(
        [&](int id, transl_tk::Base * point) { found[id] = coordinatesOf(point); });
    return found;
}

} // namespace tests

#endif
