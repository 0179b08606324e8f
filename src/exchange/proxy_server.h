#ifndef KELD_TRANSL_EXCHANGE_PROXY_SERVER_H
#define KELD_TRANSL_EXCHANGE_PROXY_SERVER_H

#include "exchange/singleton.h"

#include <keld-transl/exchange/shared_mem.h>
#include <keld-transl/reporting/stream_policy.h>

#include <string>

namespace transl_tk {

/// What the static class `Server` works on.
class ProxyServer : public Singleton<ProxyServer>
{
    friend class Singleton<ProxyServer>;
    ProxyServer();

public:
    ~ProxyServer() override;

    /// Puts `stream`, which is then owned, in the place of the current one.
    void replaceStream(StreamPolicy * stream);

    bool m_Remote = false;
    bool m_HostRunning = false;
    bool m_Open = false;
    unsigned int m_ServerType = 1;
    SharedMem * m_SharedMem = nullptr; ///< owned
    StreamPolicy * m_Stream;           ///< owned unless it is `m_DefaultStream`
    StreamPolicy * m_DefaultStream;    ///< owned

    /// Why the last exchange failed, empty when it did not.
    std::string m_ExchangeFailure;

    /// The segment of the running conversation. Its name is cleared away when the translator has
    /// ended, in case the translator died holding it.
    std::string m_ConversationSegment;

    /// The frame that is being handled, so that a handler takes no more than it holds.
    char const * m_Frame = nullptr;
    int m_FrameLength = 0;
};

} // namespace transl_tk

#endif
