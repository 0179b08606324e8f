#include "attributes/proxy_node.h"

namespace transl_tk {

ProxyLeaf::~ProxyLeaf()
{
    for (Parameter * const parameter : m_Parameters)
        Parameter::destruct(parameter);
}

void ProxyLeaf::addParameter(Parameter * parameter)
{
    if (parameter != nullptr)
        m_Parameters.push_back(parameter);
}

bool ProxyLeaf::forEachParameter(bool (*callback)(Parameter *, void *), void * user)
{
    for (std::size_t i = 0; i < m_Parameters.size(); ++i)
        if (!callback(m_Parameters[i], user))
            return false;
    return true;
}

Leaf * Leaf::create(int const & id)
{
    return new ProxyLeaf(id);
}

} // namespace transl_tk
