#ifndef KELD_TESTS_SUPPORT_SEGMENTS_H
#define KELD_TESTS_SUPPORT_SEGMENTS_H

#include <keld-common/file_mapping.h>
#include <keld-transl/exchange/shared_mem.h>

#include <bit>
#include <cstdint>
#include <cstring>
#include <string>
#include <unistd.h>
#include <vector>

namespace tests {

using Bytes = std::vector<unsigned char>;

/// A name for a segment that no other test uses.
inline std::string segmentName()
{
    static int number = 0;
    return "test-" + std::to_string(::getpid()) + "-" + std::to_string(++number);
}

/// The bytes of the segment `name`; empty when there is none.
inline Bytes segmentBytes(std::string const & name)
{
    transl_tk::SharedMem segment(name, 0, false);
    segment.map();
    Bytes bytes;
    if (segment.m_Base != nullptr) {
        auto const * const first = static_cast<unsigned char const *>(segment.m_Base);
        bytes.assign(first, first + FileMappingSize(segment.m_Handle));
    }
    segment.forceUnmap();
    return bytes;
}

/// A segment with given bytes, for the life of the object.
class ScopedSegment
{
public:
    ScopedSegment(std::string const & name, Bytes const & bytes)
        : m_Segment(name, static_cast<long long>(bytes.size()), true)
    {
        m_Segment.map();
        std::memcpy(m_Segment.m_Base, bytes.data(), bytes.size());
    }
    ScopedSegment(ScopedSegment const &) = delete;
    ScopedSegment & operator=(ScopedSegment const &) = delete;
    ~ScopedSegment() { m_Segment.forceUnmap(); }

private:
    transl_tk::SharedMem m_Segment;
};

/// Builds a byte string field by field, as the stream's tables describe it.
class ByteString
{
public:
    ByteString & i32(int value)
    {
        for (int shift = 0; shift < 32; shift += 8)
            m_Bytes.push_back(static_cast<unsigned char>(static_cast<unsigned>(value) >> shift));
        return *this;
    }
    ByteString & u8(int value)
    {
        m_Bytes.push_back(static_cast<unsigned char>(value));
        return *this;
    }
    /// Doubles in a row, each by its bits, the least significant byte first.
    ByteString & f64(std::vector<double> const & values)
    {
        for (double const value : values)
            for (int shift = 0; shift < 64; shift += 8)
                m_Bytes.push_back(
                    static_cast<unsigned char>(std::bit_cast<std::uint64_t>(value) >> shift));
        return *this;
    }
    ByteString & raw(ByteString const & other) { return raw(other.m_Bytes); }
    ByteString & raw(Bytes const & bytes)
    {
        m_Bytes.insert(m_Bytes.end(), bytes.begin(), bytes.end());
        return *this;
    }
    ByteString & text(std::string const & text)
    {
        i32(static_cast<int>(text.size()));
        m_Bytes.insert(m_Bytes.end(), text.begin(), text.end());
        return *this;
    }
    ByteString & zeros(std::size_t count)
    {
        m_Bytes.insert(m_Bytes.end(), count, 0);
        return *this;
    }
    Bytes const & bytes() const { return m_Bytes; }

private:
    Bytes m_Bytes;
};

} // namespace tests

#endif
