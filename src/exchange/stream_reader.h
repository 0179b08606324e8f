#ifndef KELD_TRANSL_EXCHANGE_STREAM_READER_H
#define KELD_TRANSL_EXCHANGE_STREAM_READER_H

#include "exchange/populate.h"

#include <keld-transl/exchange/shared_mem.h>

#include <array>
#include <cstddef>
#include <cstring>
#include <string>

namespace transl_tk {

class ReadSession;

/// Loads fields at the cursor of a mapped segment, which another process has filled.
///
/// Nothing in the segment is trusted: each load is compared with the bytes that are left, and a
/// count with what they can hold. What does not fit throws a `StreamError` that names section,
/// record and byte. The cursor goes back into the segment with the reader.
class StreamReader
{
public:
    static constexpr bool Reads = true;

    StreamReader(SharedMem & segment, ReadSession & session)
        : m_Segment(segment), m_Session(session), m_Base(static_cast<char const *>(segment.m_Base)),
          m_At(m_Base + segment.m_Index), m_Populated(m_At), m_End(m_Base + segment.m_Size)
    {}
    StreamReader(StreamReader const &) = delete;
    StreamReader & operator=(StreamReader const &) = delete;
    ~StreamReader() { m_Segment.m_Index = static_cast<unsigned long long>(m_At - m_Base); }

    /// Name what is read from here on, for the words of an error.
    void beginSection(char const * name)
    {
        ++m_Section;
        m_SectionName = name;
        m_Record = 0;
    }
    void beginRecord() { ++m_Record; }

    /// What the reading makes.
    ReadSession & session() const { return m_Session; }

    void u8(bool & value)
    {
        unsigned char byte = 0;
        bytes(&byte, 1);
        value = byte != 0;
    }
    void byte(unsigned char & value) { bytes(&value, 1); }
    void i32(int & value) { bytes(&value, 4); }
    void f32(float & value) { bytes(&value, 4); }
    void f64(double & value) { bytes(&value, 8); }
    template <std::size_t Count> void f64(double (&values)[Count]) { bytes(values, 8 * Count); }
    template <std::size_t Count> void f64(std::array<double, Count> & values)
    {
        bytes(values.data(), 8 * Count);
    }

    /// Makes `elements` a list of `count` elements from the stream.
    template <class List> void elements(List & elements, std::size_t count)
    {
        constexpr std::size_t Size = sizeof(*elements.data());
        require(count, Size);
        elements = List(static_cast<typename List::size_type>(count));
        expectFilling(elements.data(), count * Size);
        bytes(elements.data(), count * Size);
    }
    template <class List> void counted(List & elements)
    {
        this->elements(elements, count(sizeof(*elements.data())));
    }
    void string(std::string & text);

    /// A number of elements that take `least` bytes each or more; 0 for a negative one.
    std::size_t count(std::size_t least)
    {
        int value = 0;
        i32(value);
        if (value < 1)
            return 0;
        auto const number = static_cast<std::size_t>(value);
        require(number, least);
        return number;
    }

    /// Fails unless `count` elements of `least` bytes each or more can be left.
    void require(std::size_t count, std::size_t least) const
    {
        if (count > remaining() / least) [[unlikely]]
            failAtCount(count, least);
    }

    std::size_t remaining() const { return static_cast<std::size_t>(m_End - m_At); }

    [[noreturn]] void fail(std::string const & reason) const;

private:
    [[gnu::always_inline]] void bytes(void * target, std::size_t size)
    {
        need(size);
        if (size != 0)
            std::memcpy(target, m_At, size);
        m_At += size;
    }
    /// Fails unless `size` bytes are left. The cursor never goes beyond what was populated, and
    /// that never beyond the end, so that one compare does for both.
    void need(std::size_t size)
    {
        if (size > static_cast<std::size_t>(m_Populated - m_At)) [[unlikely]]
            populateFor(size);
    }
    void populateFor(std::size_t size);
    [[noreturn]] void failAtEnd(std::size_t size) const;
    [[noreturn]] void failAtCount(std::size_t count, std::size_t least) const;

    SharedMem & m_Segment;
    ReadSession & m_Session;
    char const * m_Base;
    char const * m_At;
    char const * m_Populated; ///< end of the part that has been populated
    char const * m_End;
    char const * m_SectionName = "";
    int m_Section = 0;
    std::size_t m_Record = 0;
};

} // namespace transl_tk

#endif
