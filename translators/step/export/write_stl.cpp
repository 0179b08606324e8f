#include "export/file_buffer.h"
#include "export/model_facets.h"
#include "export/stl_measures.h"
#include "export/write_file.h"

#include <keld-translator-kit/options.h>
#include <keld-translator-kit/translator.h>

#include <charconv>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <limits>
#include <ostream>

namespace step {

namespace {

using translator_kit::Failure;
using translator_kit::OutputFile;
using translator_kit::Reason;
using translator_kit::Run;

constexpr std::size_t HeaderSize = 80;
constexpr char Header[HeaderSize + 1] = "Binary STL, written by keld_step";
constexpr int GatherEnd = 60;
constexpr int WriteEnd = 80;

using Normal = std::array<float, 3>;

/// The unit normal of a triangle, or zeros where it has none.
Normal normalOf(Triangle const & t)
{
    auto const corner = [&](std::size_t i) {
        return gp_XYZ(static_cast<double>(t[i]), static_cast<double>(t[i + 1]),
                      static_cast<double>(t[i + 2]));
    };
    gp_XYZ const cross = (corner(3) - corner(0)) ^ (corner(6) - corner(0));
    double const length = cross.Modulus();
    Normal result{};
    for (std::size_t i = 0; i < 3 && length > 0; ++i)
        result[i] = static_cast<float>(cross.Coord(static_cast<int>(i) + 1) / length + 0.0);
    return result;
}

void writeBinary(std::ostream & stream, std::vector<Facets> const & facets, std::size_t count)
{
    auto const number = static_cast<std::uint32_t>(count);
    stream.write(Header, HeaderSize);
    stream.write(reinterpret_cast<char const *>(&number), sizeof(number));
    for (Facets const & group : facets) {
        for (Triangle const & triangle : group.triangles) {
            constexpr std::size_t Size = 50;
            char bytes[Size] = {};
            Normal const normal = normalOf(triangle);
            std::memcpy(bytes, normal.data(), sizeof(normal));
            std::memcpy(bytes + sizeof(normal), triangle.data(), sizeof(triangle));
            stream.write(bytes, Size);
        }
    }
}

void addNumbers(std::ostream & stream, float const * numbers)
{
    for (int i = 0; i < 3; ++i) {
        char digits[32];
        char const * const end = std::to_chars(digits, digits + sizeof(digits), numbers[i]).ptr;
        stream << ' ' << std::string_view(digits, static_cast<std::size_t>(end - digits));
    }
    stream << '\n';
}

/// A name that stays on its line.
std::string onOneLine(std::string name)
{
    for (char & letter : name) {
        if (letter >= '\0' && letter < ' ')
            letter = '?';
    }
    return name.empty() ? name : ' ' + name;
}

void writeAscii(std::ostream & stream, std::vector<Facets> const & facets)
{
    for (Facets const & group : facets) {
        stream << "solid" << onOneLine(group.name) << '\n';
        for (Triangle const & triangle : group.triangles) {
            stream << "  facet normal";
            addNumbers(stream, normalOf(triangle).data());
            stream << "    outer loop\n";
            for (std::size_t corner = 0; corner < triangle.size(); corner += 3) {
                stream << "      vertex";
                addNumbers(stream, &triangle[corner]);
            }
            stream << "    endloop\n  endfacet\n";
        }
        stream << "endsolid" << onOneLine(group.name) << '\n';
    }
}

StlMeasures measuresOf(std::vector<Facets> const & facets)
{
    StlMeasures result;
    for (Facets const & group : facets) {
        for (Triangle const & triangle : group.triangles)
            result.add(triangle);
    }
    return result;
}

} // namespace

void writeStl(std::string const & path, Run & run)
{
    OutputFile file(path);
    Coverage coverage;
    std::string const stem = std::filesystem::path(path).stem();
    std::vector<Facets> const facets = ModelFacets(run.model(), stem, run, coverage).gather();
    StlMeasures const expected = measuresOf(facets);
    run.progress(GatherEnd);
    if (expected.count == 0) {
        coverage.report(run, "in the model");
        throw Failure(Reason::EmptyModel,
                      "The model holds no facets and no faces; " + path + " is not written.");
    }
    bool const ascii = run.options().flag("ascii").value_or(false);
    if (!ascii && expected.count > std::numeric_limits<std::uint32_t>::max())
        throw Failure(Reason::ExportFailed, path + " cannot hold so many triangles.");

    FileBuffer buffer(file);
    std::ostream stream(&buffer);
    if (ascii)
        writeAscii(stream, facets);
    else
        writeBinary(stream, facets, static_cast<std::size_t>(expected.count));
    buffer.finish();
    run.progress(WriteEnd);
    expectNone(differences(expected, measuresOfStl(file.readingPath(), ascii)), path, run);
    file.commit();
    run.message("STL holds facets alone: structure, colours and exact shapes are left out.");
    coverage.report(run, "in the model");
    run.progress(100);
}

} // namespace step
