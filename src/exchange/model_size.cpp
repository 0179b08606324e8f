#include "exchange/model_exchange.h"

#include <keld-transl/model/pool.h>

namespace transl_tk {

long long Pool::getSize()
{
    return streamSize(*m_CurrentSubPool);
}

} // namespace transl_tk
