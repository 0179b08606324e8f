#ifndef KELD_TESTS_STREAM_PRODUCT_RECORDS_H
#define KELD_TESTS_STREAM_PRODUCT_RECORDS_H

#include "stream/topology_records.h"

#include <array>
#include <bit>
#include <string>
#include <utility>
#include <vector>

/// Records of the product structure and of what stands beside it, put together field by field from
/// the tables of the stream, as those of geometry are.
namespace tests {

inline constexpr int Points = 2;
inline constexpr int Annotations = 15;
inline constexpr int Assemblies = 16;
inline constexpr int Parts = 17;
inline constexpr int Instances = 18;
inline constexpr int Attributes = 19;
inline constexpr int ReportEntries = 20;
inline constexpr int TextList = 21;
inline constexpr int FacesToSplit = 22;
inline constexpr int Log = 23;

} // namespace tests

namespace tests::records {

inline ByteString point(int id)
{
    return ByteString().i32(id).f64({1, 2, 3});
}

inline ByteString textValue(std::string const & text)
{
    return ByteString().i32(1).text(text);
}
inline ByteString intValue(int number)
{
    return ByteString().i32(2).i32(number);
}
inline ByteString boolValue(int byte)
{
    return ByteString().i32(3).u8(byte);
}
inline ByteString floatValue(float number)
{
    return ByteString().i32(4).i32(std::bit_cast<int>(number));
}
inline ByteString doubleValue(double number)
{
    return ByteString().i32(5).f64({number});
}
inline ByteString byteValue(int byte)
{
    return ByteString().i32(6).u8(byte);
}

/// A count, and the records.
inline ByteString counted(std::vector<ByteString> const & list)
{
    ByteString record;
    record.i32(static_cast<int>(list.size()));
    for (ByteString const & each : list)
        record.raw(each);
    return record;
}

/// Pairs of id and kind; the count is that of the numbers.
using References = std::vector<std::pair<int, int>>;

inline ByteString attachments(References const & list)
{
    ByteString record;
    record.i32(2 * static_cast<int>(list.size()));
    for (auto const & [id, kind] : list)
        record.i32(id).i32(kind);
    return record;
}

inline ByteString attribute(std::string const & name, int type,
                            std::vector<ByteString> const & values, References const & entities)
{
    return ByteString().text(name).i32(type).raw(counted(values)).raw(attachments(entities));
}

inline ByteString property(std::string const & name, ByteString const & value)
{
    return ByteString().text(name).raw(value);
}

inline ByteString parameter(int param, std::vector<ByteString> const & values)
{
    return ByteString().i32(param).raw(counted(values));
}

inline ByteString leaf(int id, std::vector<ByteString> const & parameters = {},
                       References const & entities = {},
                       std::vector<ByteString> const & properties = {})
{
    ByteString record;
    record.i32(id).i32(2).raw(counted(parameters));
    return record.raw(attachments(entities)).raw(counted(properties));
}

inline ByteString branch(int id, int tag, std::string const & name,
                         std::vector<ByteString> const & children = {},
                         References const & entities = {},
                         std::vector<ByteString> const & properties = {})
{
    ByteString record;
    record.i32(id).i32(1).i32(tag).text(name).raw(counted(children));
    return record.raw(attachments(entities)).raw(counted(properties));
}

/// A node that came before.
inline ByteString again(int id)
{
    return ByteString().i32(id);
}

/// The units of a new component: millimetres, and 1 in the place of the angular type.
inline ByteString millimetres()
{
    return ByteString().i32(1).f64({1}).i32(1).f64({1});
}

inline ByteString identity()
{
    return ByteString().u8(1);
}

inline ByteString transform(std::vector<double> const & sixteen)
{
    return ByteString().u8(0).f64(sixteen);
}

inline ByteString assembly(int id, std::string const & name, std::vector<int> const & children)
{
    ByteString record;
    record.i32(id).text(name).text("").text("").raw(millimetres()).raw(identity());
    return record.raw(ids(children));
}

/// Bodies, points, spot welds, coordinate systems, facets, curves, edges, annotations.
using Lists = std::array<std::vector<int>, 8>;

inline ByteString part(int id, std::string const & name, std::vector<ByteString> const & nodes = {},
                       Lists const & lists = {})
{
    ByteString record;
    record.i32(id).text(name).text("").text("").text("").raw(millimetres());
    record.raw(counted(nodes)).raw(identity());
    for (std::vector<int> const & list : lists)
        record.raw(ids(list));
    return record;
}

inline ByteString instance(int id, int component)
{
    return ByteString().i32(id).i32(component).raw(identity());
}

inline ByteString annotation(int id)
{
    return ByteString().i32(id).zeros(96).i32(0).zeros(48 + 20).i32(0).i32(0);
}

inline ByteString reportEntry(std::string const & text, int entityType, int entryType)
{
    return ByteString().text(text).i32(entityType).i32(entryType);
}

inline ByteString logEntry(std::string const & text, int subType, int shown)
{
    return ByteString().text(text).i32(subType).u8(shown);
}

/// Puts entries into the log of `stream`, which has none and ends there: lists 1, 2, 3, 4 and 6.
inline Bytes withLog(Bytes stream, std::array<std::vector<ByteString>, 5> const & lists)
{
    stream.erase(stream.end() - 20, stream.end());
    ByteString log;
    for (auto const & list : lists)
        log.i32(static_cast<int>(list.size()));
    for (auto const & list : lists)
        for (ByteString const & entry : list)
            log.raw(entry);
    stream.insert(stream.end(), log.bytes().begin(), log.bytes().end());
    return stream;
}

} // namespace tests::records

#endif
