#include "exchange/proxy_server.h"

#include "reporting/stream_implementation.h"

namespace transl_tk {

ProxyServer::ProxyServer()
    : m_Stream(new StreamImplementation<StreamOff, FileOff>), m_DefaultStream(m_Stream)
{}

ProxyServer::~ProxyServer()
{
    delete m_SharedMem;
    if (m_Stream != m_DefaultStream)
        delete m_Stream;
    delete m_DefaultStream;
}

void ProxyServer::replaceStream(StreamPolicy * stream)
{
    if (m_Stream != m_DefaultStream)
        delete m_Stream;
    m_Stream = stream;
}

} // namespace transl_tk
