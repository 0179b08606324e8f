#include "geom/proxy_cartesian_coord.h"
#include "model/entity.h"

#include <keld-transl/topology/cartesian_coord.h>

namespace transl_tk {

namespace {

class ProxyCartesianCoord final : public CartesianCoord, public Pooled<ProxyCartesianCoord>
{
public:
    ProxyCartesianCoord(int id, geom::Placement const & axes) : CartesianCoord(id), m_Coord(axes) {}
    ~ProxyCartesianCoord() override = default;

    int getEntityKind() override { return EntityKindCartesianCoord; }

    void getAxes(double (&origin)[3], double (&first)[3], double (&second)[3],
                 double (&third)[3]) override
    {
        m_Coord.getAxes(origin, first, second, third);
    }

private:
    geom::ProxyCartesianCoord m_Coord;
};

} // namespace

CartesianCoord * CartesianCoord::create(int const & id, double const (&origin)[3],
                                        double const (&first)[3], double const (&second)[3],
                                        double const (&third)[3])
{
    return createEntity<ProxyCartesianCoord>(
        &SubPool::m_CartesianCoords, id,
        geom::Placement{std::to_array(origin), std::to_array(first), std::to_array(second),
                        std::to_array(third)});
}

void CartesianCoord::destruct(CartesianCoord * coord)
{
    delete coord;
}

CartesianCoord::~CartesianCoord()
{
    leaveStore(&SubPool::m_CartesianCoords, this);
}

} // namespace transl_tk
