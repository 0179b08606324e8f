#include "exchange/populate.h"

#include <algorithm>
#include <cstdint>
#include <sys/mman.h>

namespace transl_tk {

std::size_t populate(char const * at, std::size_t size, std::size_t left, Access access)
{
    constexpr std::size_t Piece = 1024UL * 1024;
    std::size_t const piece = std::min(std::max(size, Piece), left);
#ifdef MADV_POPULATE_WRITE
    constexpr std::uintptr_t Page = 4096;
    auto const offset = reinterpret_cast<std::uintptr_t>(at) % Page;
    // A kernel that does not know the advice leaves all pages to the accesses.
    ::madvise(const_cast<char *>(at) - offset, piece + offset,
              access == Access::Write ? MADV_POPULATE_WRITE : MADV_POPULATE_READ);
#else
    static_cast<void>(at);
    static_cast<void>(access);
#endif
    return piece;
}

} // namespace transl_tk
