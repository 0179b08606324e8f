#include "topology/proxy_loop.h"

namespace transl_tk {

Loop * Loop::create(int const & id)
{
    return createEntity<ProxyLoop>(&SubPool::m_Loops, id);
}

void Loop::destruct(Loop * loop)
{
    delete loop;
}

Loop::~Loop()
{
    leaveStore(&SubPool::m_Loops, this);
}

} // namespace transl_tk
