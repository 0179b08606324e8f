#ifndef KELD_TESTS_STREAM_TOPOLOGY_RECORDS_H
#define KELD_TESTS_STREAM_TOPOLOGY_RECORDS_H

#include "support/segments.h"

#include <bit>
#include <map>
#include <string>
#include <vector>

/// Records of facets and topology, put together field by field from the tables of the stream, as
/// those of geometry are.
namespace tests {

inline constexpr int Facets = 1;
inline constexpr int Vertices = 8;
inline constexpr int Edges = 9;
inline constexpr int Fins = 10;
inline constexpr int Loops = 11;
inline constexpr int Faces = 12;
inline constexpr int Shells = 13;
inline constexpr int Bodies = 14;

} // namespace tests

namespace tests::records {

inline ByteString ids(std::vector<int> const & list)
{
    ByteString record;
    record.i32(static_cast<int>(list.size()));
    for (int const id : list)
        record.i32(id);
    return record;
}

inline ByteString f32(std::vector<float> const & values)
{
    ByteString record;
    for (float const value : values)
        record.i32(std::bit_cast<int>(value));
    return record;
}

inline ByteString vertex(int id, std::vector<double> const & position)
{
    return ByteString().i32(id).u8(1).f64(position);
}

inline ByteString vertex(int id, double parameter)
{
    return ByteString().i32(id).u8(0).f64({parameter});
}

inline ByteString edge(int id, int curve, int start, int end, bool sense = true)
{
    return ByteString().i32(id).i32(curve).i32(start).i32(end).u8(sense);
}

inline ByteString fin(int id, int edge, int uvCurve = -1, bool sense = true)
{
    return ByteString().i32(id).u8(sense).i32(edge).i32(uvCurve);
}

inline ByteString loop(int id, std::vector<int> const & fins)
{
    return ByteString().i32(id).raw(ids(fins));
}

inline ByteString face(int id, std::string const & label, bool sense, int surface,
                       std::vector<int> const & loops)
{
    return ByteString().i32(id).text(label).u8(sense).i32(surface).raw(ids(loops));
}

inline ByteString shell(int id, bool flag, std::vector<int> const & faces)
{
    return ByteString().i32(id).u8(flag).raw(ids(faces));
}

inline ByteString body(int id, std::string const & name, std::vector<int> const & shells,
                       std::vector<int> const & strips)
{
    return ByteString().i32(id).text(name).raw(ids(shells)).raw(ids(strips));
}

/// Facets of two vertices and nothing else.
inline ByteString bareStrip(int id)
{
    ByteString record;
    record.i32(id).u8(0).i32(2).raw(f32({1, 2, 3, 4, 5, 6}));
    return record.i32(0).i32(0).i32(0);
}

/// The bytes of a model that holds these records, by the number of their section, and nothing else.
inline Bytes model(std::map<int, std::vector<ByteString>> const & sections)
{
    constexpr int CountsInAll = 27;
    ByteString stream;
    for (int section = 1; section <= CountsInAll; ++section) {
        auto const found = sections.find(section);
        if (found == sections.end()) {
            stream.i32(0);
            continue;
        }
        stream.i32(static_cast<int>(found->second.size()));
        for (ByteString const & record : found->second)
            stream.raw(record);
    }
    return stream.bytes();
}

} // namespace tests::records

#endif
