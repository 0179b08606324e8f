#include "export/stl_measures.h"

#include "export/difference_list.h"

#include <keld-translator-kit/input_file.h>

#include <cmath>
#include <cstdint>
#include <cstring>
#include <fstream>
#include <gp_Pnt.hxx>

namespace step {

namespace {

constexpr long long HeaderSize = 84;
constexpr std::size_t TriangleSize = 50;
constexpr std::size_t NormalSize = 12;

StlMeasures measuresOfBinary(std::string const & path)
{
    StlMeasures result;
    translator_kit::InputFile file(path);
    file.seek(HeaderSize - static_cast<long long>(sizeof(std::uint32_t)));
    std::uint32_t announced = 0;
    char number[sizeof(announced)] = {};
    if (file.read(number, sizeof(number)) == sizeof(number))
        std::memcpy(&announced, number, sizeof(number));
    constexpr std::size_t Chunk = 4096;
    std::vector<char> bytes(Chunk * TriangleSize);
    for (std::size_t size = bytes.size(); size == bytes.size();) {
        size = file.read(bytes.data(), bytes.size());
        for (std::size_t at = 0; at + TriangleSize <= size && result.count < announced;
             at += TriangleSize) {
            Triangle triangle;
            std::memcpy(triangle.data(), &bytes[at + NormalSize], sizeof(triangle));
            result.add(triangle);
        }
    }
    return result;
}

StlMeasures measuresOfAscii(std::string const & path)
{
    StlMeasures result;
    std::ifstream file(path);
    Triangle triangle{};
    std::size_t known = 0;
    for (std::string line; std::getline(file, line);) {
        char const * text = line.c_str();
        text += std::strspn(text, " ");
        constexpr char Word[] = "vertex ";
        if (std::strncmp(text, Word, sizeof(Word) - 1) != 0)
            continue;
        text += sizeof(Word) - 1;
        for (int i = 0; i < 3; ++i) {
            char * end = nullptr;
            triangle[known++] = std::strtof(text, &end);
            text = end;
        }
        if (known == triangle.size()) {
            result.add(triangle);
            known = 0;
        }
    }
    return result;
}

} // namespace

void StlMeasures::add(Triangle const & triangle)
{
    gp_XYZ corners[3];
    for (std::size_t i = 0; i < 3; ++i) {
        corners[i] = {static_cast<double>(triangle[3 * i]),
                      static_cast<double>(triangle[3 * i + 1]),
                      static_cast<double>(triangle[3 * i + 2])};
        box.Add(gp_Pnt(corners[i]));
    }
    ++count;
    area += ((corners[1] - corners[0]) ^ (corners[2] - corners[0])).Modulus() / 2;
    volume += corners[0].DotCross(corners[1], corners[2]) / 6;
}

StlMeasures measuresOfStl(std::string const & path, bool ascii)
{
    return ascii ? measuresOfAscii(path) : measuresOfBinary(path);
}

std::vector<std::string> differences(StlMeasures const & expected, StlMeasures const & found)
{
    DifferenceList list;
    list.compare("number of triangles", expected.count, found.count);
    list.compare("area", expected.area, found.area, expected.area);
    // The parts of the volume cancel each other out where a mesh is open or small and far away.
    list.compare("volume", expected.volume, found.volume,
                 std::max(std::abs(expected.volume), std::pow(expected.area, 1.5)));
    list.compare("", expected.box, found.box);
    return list.take();
}

} // namespace step
