#include "exchange/stream_reader.h"

#include "exchange/populate.h"
#include "exchange/stream_error.h"

namespace transl_tk {

void StreamReader::string(std::string & text)
{
    std::size_t const size = count(1);
    need(size);
    void const * const nul = std::memchr(m_At, 0, size);
    text.assign(m_At, nul != nullptr
                          ? static_cast<std::size_t>(static_cast<char const *>(nul) - m_At)
                          : size);
    m_At += size;
}

void StreamReader::populateFor(std::size_t size)
{
    if (size > remaining())
        failAtEnd(size);
    m_Populated = m_At + populate(m_At, size, remaining(), Access::Read);
}

void StreamReader::failAtCount(std::size_t count, std::size_t least) const
{
    fail("a count of " + std::to_string(count) + " needs at least " +
         std::to_string(count * least) + " bytes, and " + std::to_string(remaining()) +
         " are left");
}

void StreamReader::failAtEnd(std::size_t size) const
{
    fail("a field of " + std::to_string(size) + " bytes runs past the end, " +
         std::to_string(remaining()) + " bytes are left");
}

void StreamReader::fail(std::string const & reason) const
{
    throw StreamError("The model stream is not sound: section " + std::to_string(m_Section) + " (" +
                      m_SectionName + "), record " + std::to_string(m_Record) + ", byte " +
                      std::to_string(m_At - m_Base) + ": " + reason + ".");
}

} // namespace transl_tk
