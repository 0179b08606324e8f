// Bytes as what a translator sends: the receive loop must neither leave its buffer nor hand over a
// frame beyond it. Each read brings as many bytes as the first byte left says, and 0 is an
// interruption.

#include "process/receive_loop.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <memory>

namespace {

std::uint8_t const * g_Data = nullptr;
std::size_t g_Size = 0;
char * g_Buffer = nullptr;

} // namespace

extern "C" {

int pipe_read(ServerControl *, char * destination, int size)
{
    if (size < 0 || destination < g_Buffer ||
        destination + size > g_Buffer + KELD_RECEIVE_BUFFER_SIZE)
        std::abort();
    if (g_Size == 0)
        return 0;
    std::size_t const wanted = std::size_t{*g_Data} * 200;
    ++g_Data;
    --g_Size;
    if (wanted == 0) {
        errno = EINTR;
        return -1;
    }
    std::size_t const count = std::min({wanted, g_Size, static_cast<std::size_t>(size)});
    std::memcpy(destination, g_Data, count);
    g_Data += count;
    g_Size -= count;
    return static_cast<int>(count);
}

void ServerEndOk(int) {}

int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    auto const buffer = std::make_unique<char[]>(KELD_RECEIVE_BUFFER_SIZE);
    ServerControl control{};
    control.descriptor = 3;
    control.buffer = control.cursor = g_Buffer = buffer.get();
    g_Data = data;
    g_Size = size;
    transl_tk::receiveFrames(
        control,
        [](char * frame, int &, bool const &, int &, void *) {
            if (frame < g_Buffer || frame >= g_Buffer + KELD_RECEIVE_BUFFER_SIZE)
                std::abort();
            return true;
        },
        nullptr);
    return 0;
}

} // extern "C"
