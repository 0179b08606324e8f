#include "exchange/populate.h"

#include <keld-common/file_mapping.h>

#include <algorithm>
#include <cstdint>
#include <sys/mman.h>

namespace transl_tk {

std::size_t populate(char const * at, std::size_t size, std::size_t left, Access access)
{
    constexpr std::size_t Piece = 1024UL * 1024;
    std::size_t const piece = std::min(std::max(size, Piece), left);
    PrepareViewOfFile(at, piece, access == Access::Write ? 1 : 0);
    return piece;
}

void expectFilling(void * at, std::size_t size)
{
#ifdef MADV_HUGEPAGE
    constexpr std::size_t Page = 4096;
    constexpr std::size_t Least = 8UL * 1024 * 1024;
    if (size < Least)
        return;
    auto const address = reinterpret_cast<std::uintptr_t>(at);
    auto const first = (address + Page - 1) / Page * Page;
    auto const end = (address + size) / Page * Page;
    ::madvise(reinterpret_cast<void *>(first), end - first, MADV_HUGEPAGE);
#else
    static_cast<void>(at);
    static_cast<void>(size);
#endif
}

} // namespace transl_tk
