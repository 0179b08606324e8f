#include "exchange/model_exchange.h"
#include "exchange/proxy_server.h"
#include "exchange/stream_error.h"

#include <keld-transl/model/pool.h>

#include <ostream>

namespace transl_tk {

long long Pool::getSize()
{
    try {
        return streamSize(*m_CurrentSubPool);
    } catch (StreamError const & error) {
        ProxyServer::instance().m_Stream->post(StreamPolicy::Error) << error.what() << std::endl;
        return 0;
    }
}

} // namespace transl_tk
