#ifndef KELD_TESTS_STL_FILES_H
#define KELD_TESTS_STL_FILES_H

#include "process/keld_program.h"

#include <array>
#include <cstdint>
#include <string>
#include <vector>

namespace tests {

/// The nine coordinates of a triangle's corners.
using Triangle = std::array<float, 9>;

/// Corners (0 0 0), (1 0 0) and (0 1 0).
inline constexpr Triangle FirstTriangle = {0, 0, 0, 1, 0, 0, 0, 1, 0};
/// Corners (1 0 0), (1 1 0) and (0 1 0); two are those of the first.
inline constexpr Triangle SecondTriangle = {1, 0, 0, 1, 1, 0, 0, 1, 0};

/// A binary file whose header begins with `header` and which announces `count` triangles; its
/// normals are NaN and its attribute bytes are not 0, neither of which says anything.
std::string binaryStl(std::vector<Triangle> const & triangles, std::uint32_t count,
                      std::string const & header = "some program");
std::string binaryStl(std::vector<Triangle> const & triangles);

/// The triangles of a binary file, which must be sound.
std::vector<Triangle> trianglesOf(std::string const & binary);

/// A facet of an ASCII file as the translator writes it; `normal` and each corner are three
/// numbers.
std::string facet(std::string const & normal, std::array<std::string, 3> const & corners);

/// The facet of the first and of the second triangle.
std::string firstFacet();
std::string secondFacet();

/// `facets` between the lines that name the solid.
std::string solid(std::string const & name, std::string const & facets);

/// Has the program import `content` as part.stl and print the model.
Ended importStl(std::string const & content, std::vector<std::string> arguments = {});

/// What the program makes of `content` as part.stl when it writes it as ASCII; empty, and a failure
/// of the test, when it fails or warns.
std::string asciiOf(std::string const & content);

} // namespace tests

#endif
