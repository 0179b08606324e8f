#include "exchange/stream_writer.h"

#include <algorithm>
#include <cstdint>
#include <sys/mman.h>

namespace transl_tk {

void StreamWriter::prepare(std::size_t size)
{
    constexpr std::size_t Piece = 1024UL * 1024;
    [[maybe_unused]] constexpr std::uintptr_t Page = 4096;
    auto const piece = std::min(std::max(size, Piece), static_cast<std::size_t>(m_End - m_At));
#ifdef MADV_POPULATE_WRITE
    // A kernel that cannot do it leaves the pages to the stores.
    auto const offset = reinterpret_cast<std::uintptr_t>(m_At) % Page;
    ::madvise(m_At - offset, piece + offset, MADV_POPULATE_WRITE);
#endif
    m_Prepared = m_At + piece;
}

} // namespace transl_tk
