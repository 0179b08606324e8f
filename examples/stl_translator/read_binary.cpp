#include "read_stl.h"

#include <keld-translator-kit/translator.h>

#include <algorithm>
#include <cstring>
#include <limits>

namespace stl {

namespace {

using translator_kit::Failure;
using translator_kit::InputFile;
using translator_kit::Reason;
using translator_kit::Run;

constexpr std::size_t ChunkSize = 8192; // triangles
constexpr std::size_t NormalSize = 3 * sizeof(float);
constexpr std::uint32_t MinusZero = 0x80000000;
constexpr std::uint32_t ExponentBits = 0x7F800000;

std::string text(std::size_t number)
{
    return std::to_string(number);
}

/// Compares what the file announces to what it has room for. Returns the bytes behind the last
/// triangle.
std::size_t checkSize(std::string const & path, std::size_t size, std::size_t count)
{
    std::size_t const room = (size - PreambleSize) / TriangleSize;
    std::size_t const rest = (size - PreambleSize) % TriangleSize;
    if (room < count)
        throw Failure(Reason::Failed, path + " is cut short, or its count is wrong: it announces " +
                                          text(count) + " triangles and has room for " +
                                          text(room) + ".");
    if (room > count && rest == 0)
        throw Failure(Reason::Failed, path + " has a wrong count: it announces " + text(count) +
                                          " triangles and has room for " + text(room) + ".");
    return size - PreambleSize - count * TriangleSize;
}

/// Takes the corners of a triangle. False when a coordinate is not finite.
bool takeCorners(char const * triangle, Corner * corners)
{
    std::uint32_t bits[9];
    std::memcpy(bits, triangle + NormalSize, sizeof(bits));
    bool finite = true;
    for (std::uint32_t & coordinate : bits) {
        coordinate = coordinate == MinusZero ? 0 : coordinate;
        finite &= (coordinate & ExponentBits) != ExponentBits;
    }
    std::memcpy(corners, bits, sizeof(bits));
    return finite;
}

} // namespace

Solid readBinary(std::string const & path, InputFile & file, std::uint32_t count, Run & run)
{
    std::size_t const rest = checkSize(path, static_cast<std::size_t>(file.size()), count);
    if (count > std::numeric_limits<int>::max() / 3)
        throw Failure(Reason::Failed, path + " holds more triangles than a mesh can.");

    MeshBuilder builder(count);
    std::vector<char> bytes(ChunkSize * TriangleSize);
    std::vector<Corner> corners(ChunkSize * 3);
    file.seek(PreambleSize);
    for (std::size_t done = 0; done < count;) {
        std::size_t const chunk = std::min(count - done, ChunkSize);
        if (file.read(bytes.data(), chunk * TriangleSize) != chunk * TriangleSize)
            throw Failure(Reason::Failed, path + " became shorter while it was read.");
        for (std::size_t i = 0; i < chunk; ++i) {
            if (!takeCorners(&bytes[i * TriangleSize], &corners[3 * i]))
                throw Failure(Reason::Failed, path + ", triangle " + text(done + i + 1) +
                                                  ": a coordinate is not finite.");
        }
        builder.add(corners.data(), 3 * chunk);
        done += chunk;
        run.progress(static_cast<int>(100 * done / count));
    }

    if (rest > 0)
        run.warning(path + ": the last " + text(rest) +
                    " bytes, behind all triangles, are passed over.");
    return {{}, builder.take()};
}

} // namespace stl
