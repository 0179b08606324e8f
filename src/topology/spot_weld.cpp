#include "geom/proxy_point.h"
#include "model/entity.h"

#include <keld-transl/topology/spot_weld.h>

#include <algorithm>
#include <string>
#include <vector>

namespace transl_tk {

namespace {

class ProxySpotWeld final : public SpotWeld, public Pooled<ProxySpotWeld>
{
public:
    ProxySpotWeld(int id, double x, double y, double z) : SpotWeld(id), m_Point(x, y, z) {}
    ~ProxySpotWeld() override = default;

    int getEntityKind() override { return EntityKindSpotWeld; }

    void getCoordinates(double & x, double & y, double & z) override
    {
        m_Point.getCoordinates(x, y, z);
    }

    void addWeldName(char const * name) override { m_Names.emplace_back(name); }

    bool forEachWeldName(bool (*callback)(char const *, void *), void * user) override
    {
        return std::all_of(m_Names.begin(), m_Names.end(),
                           [&](std::string const & name) { return callback(name.c_str(), user); });
    }

private:
    geom::ProxyPoint m_Point;
    std::vector<std::string> m_Names;
};

} // namespace

SpotWeld * SpotWeld::create(int const & id, double const & x, double const & y, double const & z)
{
    return createEntity<ProxySpotWeld>(&SubPool::m_SpotWelds, id, x, y, z);
}

void SpotWeld::destruct(SpotWeld * weld)
{
    delete weld;
}

SpotWeld::~SpotWeld()
{
    leaveStore(&SubPool::m_SpotWelds, this);
}

} // namespace transl_tk
