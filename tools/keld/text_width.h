#ifndef KELD_TOOLS_TEXT_WIDTH_H
#define KELD_TOOLS_TEXT_WIDTH_H

#include <cstddef>
#include <string>
#include <string_view>

namespace keld {

// All take UTF-8 without control characters. A byte that is no UTF-8 counts as one column.

/// How many columns of a terminal `text` takes: none for a mark that combines with the character in
/// front of it, two for a wide character of East Asia.
std::size_t textWidth(std::string_view text);

/// `text` in at most `width` columns. What is too long has "..." in place of its middle, or, when
/// `width` leaves no room for that, its end alone.
std::string shortened(std::string_view text, std::size_t width);

/// `text` with blanks behind it, or in front of it, up to `width` columns.
std::string padded(std::string_view text, std::size_t width);
std::string paddedLeft(std::string_view text, std::size_t width);

} // namespace keld

#endif
