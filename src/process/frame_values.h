#ifndef KELD_TRANSL_PROCESS_FRAME_VALUES_H
#define KELD_TRANSL_PROCESS_FRAME_VALUES_H

#include "exchange/proxy_server.h"

#include <cstring>

namespace transl_tk {

/// Takes a value from a frame at `buffer + position` and steps over it. False, with nothing taken,
/// when the frame that is being received ends before it.
template <class Value> bool takeValue(char const * buffer, int & position, Value & value)
{
    constexpr int Size = sizeof(Value);
    ProxyServer const & server = ProxyServer::instance();
    if (buffer == server.m_Frame && position + Size > server.m_FrameLength)
        return false;
    std::memcpy(&value, buffer + position, sizeof(Value));
    position += Size;
    return true;
}

/// The exit status of a frame; `ifMissing` when the frame is too short to hold one.
inline unsigned int takeStatus(char const * buffer, int & position, unsigned int ifMissing)
{
    unsigned int status = ifMissing;
    takeValue(buffer, position, status);
    return status;
}

} // namespace transl_tk

#endif
