#ifndef KELD_EXAMPLES_POINT_LINE_H
#define KELD_EXAMPLES_POINT_LINE_H

#include <string>
#include <string_view>

namespace xyz {

enum class LineKind { Point, Nothing, Fault };

/// Reads one line, without its line end. `Nothing` is an empty line or a comment; for `Fault`,
/// `fault` tells what is wrong.
LineKind readLine(std::string_view line, double (&position)[3], std::string & fault);

} // namespace xyz

#endif
