#include "process/receive_loop.h"

#include "exchange/proxy_server.h"

#include <keld-transl/process/rwfd.h>
#include <keld-transl/reporting/lib_configure.h>

#include <algorithm>
#include <cerrno>
#include <cstring>

namespace transl_tk {

namespace {

using Callback = bool (*)(char *, int &, bool const &, int &, void *);

constexpr int BufferSize = KELD_RECEIVE_BUFFER_SIZE;
constexpr int LengthBytes = 2;

/// Waits for input into an empty buffer. False at the end of input, on failure, and on a channel
/// that is closed.
bool fill(ServerControl & control)
{
    for (;;) {
        if (control.closed != 0 || control.descriptor == 0)
            return false;
        if (control.unread > 0)
            return true;
        int const got = pipe_read(&control, control.buffer, BufferSize);
        if (got < 0 && errno == EINTR)
            continue;
        if (got <= 0)
            return false;
        control.cursor = control.buffer;
        control.unread = got;
        return true;
    }
}

/// Moves what is unread to the start of the buffer and reads more behind it. False when nothing
/// more comes; the frame is then given up.
///
/// A read that was interrupted is repeated to the buffer's start, over the bytes that were kept,
/// while the count goes on as if they still stood there.
bool refill(ServerControl & control)
{
    int const kept = control.unread;
    int offset = std::max(kept, 0);
    if (offset > 0)
        std::memmove(control.buffer, control.cursor, static_cast<std::size_t>(offset));
    int const room = BufferSize - offset;
    for (;;) {
        control.unread = pipe_read(&control, control.buffer + offset, room);
        if (control.unread > 0)
            break;
        if (control.unread == 0 || errno != EINTR)
            return false;
        offset = 0;
    }
    control.cursor = control.buffer;
    control.unread += kept;
    return true;
}

/// Steps over `bytes` bytes, of which the buffer may hold fewer.
void advance(ServerControl & control, int bytes)
{
    control.unread -= bytes;
    auto const left = control.buffer + BufferSize - control.cursor;
    control.cursor += std::min<std::ptrdiff_t>(bytes, left);
}

/// Hands a frame to the callback.
void dispatch(ServerControl & control, int length, Callback callback, void * context)
{
    int key = static_cast<signed char>(*control.cursor);
    int position = 1;
    bool const hasPayload = length >= 2;
    ProxyServer & server = ProxyServer::instance();
    server.m_Frame = control.cursor;
    server.m_FrameLength = length;
    callback(control.cursor, position, hasPayload, key, context);
    server.m_Frame = nullptr;
}

enum class Outcome { EndMark, GivenUp };

/// Takes frames from the buffer and refills it as they are used up.
Outcome takeFrames(ServerControl & control, int & frameLength, Callback callback, void * context)
{
    for (;;) {
        while (control.unread < LengthBytes)
            if (!refill(control))
                return Outcome::GivenUp;
        auto const low = static_cast<unsigned char>(control.cursor[0]);
        auto const high = static_cast<unsigned char>(control.cursor[1]);
        int const length = low | high << 8;
        advance(control, LengthBytes);
        if (control.unread <= 0 && !refill(control))
            return Outcome::GivenUp;
        // An empty frame leaves the length of the frame before it in force, which is then stepped
        // over once more.
        if (length != 0) {
            frameLength = length;
            while (control.unread < length)
                if (!refill(control))
                    return Outcome::GivenUp;
            if (length == 1 && *control.cursor == FrameEnd)
                return Outcome::EndMark;
            if (length != 1 || *control.cursor != FrameSkip)
                dispatch(control, length, callback, context);
        }
        advance(control, frameLength);
    }
}

} // namespace

void receiveFrames(ServerControl & control, Callback callback, void * context)
{
    int frameLength = 0;
    for (;;) {
        control.unread = 0;
        void * const clock = dbg::startQAClock(0, "FILL_BUFFER");
        bool const filled = fill(control);
        dbg::stopQAClock(clock);
        if (!filled || takeFrames(control, frameLength, callback, context) == Outcome::EndMark)
            break;
    }
    ServerEndOk(KELD_CHANNEL_NUMBER);
}

} // namespace transl_tk
