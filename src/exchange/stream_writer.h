#ifndef KELD_TRANSL_EXCHANGE_STREAM_WRITER_H
#define KELD_TRANSL_EXCHANGE_STREAM_WRITER_H

#include "exchange/populate.h"

#include <keld-transl/exchange/shared_mem.h>

#include <array>
#include <cassert>
#include <cstddef>
#include <cstring>
#include <string_view>

namespace transl_tk {

/// Stores fields at the cursor of a mapped segment, packed and little-endian.
///
/// The segment has the size that a `SizeCounter` found for the same fields, so that stores need no
/// bound; a debug build asserts it at each of them. The cursor is kept here while the writer lives
/// and goes back into the segment with it.
class StreamWriter
{
public:
    static constexpr bool Reads = false;
    static constexpr bool CountsOnly = false;

    explicit StreamWriter(SharedMem & segment)
        : m_Segment(segment), m_At(static_cast<char *>(segment.m_Base) + segment.m_Index),
          m_Populated(m_At), m_End(static_cast<char *>(segment.m_Base) + segment.m_Size)
    {}
    StreamWriter(StreamWriter const &) = delete;
    StreamWriter & operator=(StreamWriter const &) = delete;
    ~StreamWriter()
    {
        m_Segment.m_Index =
            static_cast<unsigned long long>(m_At - static_cast<char *>(m_Segment.m_Base));
    }

    void u8(bool const & value)
    {
        unsigned char const byte = value ? 1 : 0;
        bytes(&byte, 1);
    }
    void byte(unsigned char value) { bytes(&value, 1); }
    void i32(int const & value) { bytes(&value, 4); }
    void f32(float value) { bytes(&value, 4); }
    template <std::size_t Count> void f64(double const (&values)[Count])
    {
        bytes(values, 8 * Count);
    }
    void f64(double const & value) { bytes(&value, 8); }
    template <std::size_t Count> void f64(std::array<double, Count> const & values)
    {
        bytes(values.data(), 8 * Count);
    }
    /// Stores the first `count` elements of a list, in one piece.
    template <class List> void elements(List const & elements, std::size_t count)
    {
        bytes(elements.data(), count * sizeof(*elements.data()));
    }
    template <class List> void counted(List const & elements)
    {
        count(elements.size());
        this->elements(elements, elements.size());
    }
    void count(std::size_t value) { i32(static_cast<int>(value)); }
    void string(std::string_view text)
    {
        count(text.size());
        bytes(text.data(), text.size());
    }

    /// Whether every byte of the segment has been written.
    bool atEnd() const { return m_At == m_End; }

private:
    void bytes(void const * source, std::size_t size)
    {
        assert(size <= static_cast<std::size_t>(m_End - m_At));
        if (size > static_cast<std::size_t>(m_Populated - m_At)) [[unlikely]]
            m_Populated =
                m_At + populate(m_At, size, static_cast<std::size_t>(m_End - m_At), Access::Write);
        if (size != 0)
            std::memcpy(m_At, source, size);
        m_At += size;
    }

    SharedMem & m_Segment;
    char * m_At;
    char * m_Populated; ///< end of the part that has been populated
    char * m_End;
};

} // namespace transl_tk

#endif
