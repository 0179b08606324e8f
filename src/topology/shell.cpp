#include "topology/proxy_shell.h"

namespace transl_tk {

Shell * Shell::create(int const & id)
{
    return createEntity<ProxyShell>(&SubPool::m_Shells, id);
}

void Shell::destruct(Shell * shell)
{
    delete shell;
}

Shell::~Shell()
{
    leaveStore(&SubPool::m_Shells, this);
}

} // namespace transl_tk
