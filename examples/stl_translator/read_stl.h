#ifndef KELD_EXAMPLES_READ_STL_H
#define KELD_EXAMPLES_READ_STL_H

#include "mesh_builder.h"

#include <keld-translator-kit/input_file.h>
#include <keld-translator-kit/run.h>

#include <string>
#include <vector>

namespace stl {

/// A binary file begins with a header and the number of its triangles, and each triangle is twelve
/// floats and two attribute bytes.
constexpr std::size_t HeaderSize = 80;
constexpr std::size_t PreambleSize = HeaderSize + sizeof(std::uint32_t);
constexpr std::size_t TriangleSize = 12 * sizeof(float) + 2;

/// One solid of a file; the name is empty where the file has none.
struct Solid
{
    std::string name;
    Mesh mesh;
};

/// Reads a binary file that announces `count` triangles.
Solid readBinary(std::string const & path, translator_kit::InputFile & file, std::uint32_t count,
                 translator_kit::Run & run);

/// Reads an ASCII file from `start` on; solids without triangles are left out.
std::vector<Solid> readAscii(std::string const & path, translator_kit::InputFile & file,
                             long long start, translator_kit::Run & run);

} // namespace stl

#endif
