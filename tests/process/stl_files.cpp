#include "process/stl_files.h"

#include <cstring>
#include <gtest/gtest.h>
#include <limits>

namespace tests {

namespace {

constexpr std::size_t HeaderSize = 80;
constexpr std::size_t PreambleSize = 84;
constexpr std::size_t TriangleSize = 50;

template <class T> void append(std::string & bytes, T const & value)
{
    bytes.append(reinterpret_cast<char const *>(&value), sizeof(value));
}

} // namespace

std::string binaryStl(std::vector<Triangle> const & triangles, std::uint32_t count,
                      std::string const & header)
{
    float const nan = std::numeric_limits<float>::quiet_NaN();
    std::string bytes = header;
    bytes.resize(HeaderSize);
    append(bytes, count);
    for (Triangle const & triangle : triangles) {
        append(bytes, std::array<float, 3>{nan, nan, nan});
        append(bytes, triangle);
        append(bytes, std::uint16_t{0xFFFF});
    }
    return bytes;
}

std::string binaryStl(std::vector<Triangle> const & triangles)
{
    return binaryStl(triangles, static_cast<std::uint32_t>(triangles.size()));
}

std::vector<Triangle> trianglesOf(std::string const & binary)
{
    std::uint32_t count = 0;
    if (binary.size() >= PreambleSize)
        std::memcpy(&count, binary.data() + HeaderSize, sizeof(count));
    EXPECT_EQ(PreambleSize + count * TriangleSize, binary.size());
    if (PreambleSize + count * TriangleSize != binary.size())
        return {};
    std::vector<Triangle> triangles(count);
    for (std::size_t i = 0; i < count; ++i)
        std::memcpy(&triangles[i], &binary[PreambleSize + i * TriangleSize + 12], 36);
    return triangles;
}

std::string facet(std::string const & normal, std::array<std::string, 3> const & corners)
{
    std::string text = "  facet normal " + normal + "\n    outer loop\n";
    for (std::string const & corner : corners)
        text += "      vertex " + corner + "\n";
    return text + "    endloop\n  endfacet\n";
}

std::string firstFacet()
{
    return facet("0 0 1", {"0 0 0", "1 0 0", "0 1 0"});
}

std::string secondFacet()
{
    return facet("0 0 1", {"1 0 0", "1 1 0", "0 1 0"});
}

std::string solid(std::string const & name, std::string const & facets)
{
    std::string const line = "solid" + (name.empty() ? "" : " " + name) + "\n";
    return line + facets + "end" + line;
}

Ended importStl(std::string const & content, std::vector<std::string> arguments)
{
    KeldProgram keld;
    keld.file("part.stl", content);
    arguments.insert(arguments.begin(), {"import", "-q", "part.stl"});
    return keld.run(arguments);
}

std::string asciiOf(std::string const & content)
{
    KeldProgram keld;
    keld.file("part.stl", content);
    Ended const ended = keld.run({"convert", "-q", "-o", "ascii=true", "part.stl", "out.stl"});
    EXPECT_EQ(0, ended.code);
    EXPECT_EQ("", ended.err);
    return contentOf(keld.files() / "out.stl");
}

} // namespace tests
