#include "topology/proxy_face.h"

namespace transl_tk {

Face * Face::create(int const & id, Surface * surface)
{
    return createEntity<ProxyFace>(&SubPool::m_Faces, id, surface);
}

void Face::destruct(Face * face)
{
    delete face;
}

Face::~Face()
{
    leaveStore(&SubPool::m_Faces, this);
}

} // namespace transl_tk
