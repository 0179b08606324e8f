#include "exchange/populate.h"

#include <keld-common/file_mapping.h>

#include <algorithm>

namespace transl_tk {

std::size_t populate(char const * at, std::size_t size, std::size_t left, Access access)
{
    constexpr std::size_t Piece = 1024UL * 1024;
    std::size_t const piece = std::min(std::max(size, Piece), left);
    PrepareViewOfFile(at, piece, access == Access::Write ? 1 : 0);
    return piece;
}

} // namespace transl_tk
