#include "exchange/stream_writer.h"

#include <keld-common/file_mapping.h>

#include <algorithm>

namespace transl_tk {

void StreamWriter::prepare(std::size_t size)
{
    constexpr std::size_t Piece = 1024UL * 1024;
    auto const piece = std::min(std::max(size, Piece), static_cast<std::size_t>(m_End - m_At));
    PrepareViewOfFile(m_At, piece);
    m_Prepared = m_At + piece;
}

} // namespace transl_tk
