#include "attributes/proxy_node.h"

namespace transl_tk {

Branch * Branch::create(int const & id, char const * name, Tag const & tag)
{
    return new ProxyBranch(id, name, tag);
}

} // namespace transl_tk
