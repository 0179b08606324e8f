#include "topology/proxy_body.h"

namespace transl_tk {

Body * Body::create(int const & id, char const * name)
{
    return createEntity<ProxyBody>(&SubPool::m_Bodies, id, name);
}

void Body::destruct(Body * body)
{
    delete body;
}

Body::~Body()
{
    leaveStore(&SubPool::m_Bodies, this);
}

} // namespace transl_tk
