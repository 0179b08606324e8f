#ifndef KELD_TOOLS_UTF8_H
#define KELD_TOOLS_UTF8_H

#include <cstddef>
#include <string_view>

namespace keld {

/// One character, or one byte that begins none.
struct Character
{
    std::size_t size = 1;
    char32_t code = 0;
    bool valid = false;
};

/// The character of UTF-8 that begins at `position`, which lies in `text`.
Character characterAt(std::string_view text, std::size_t position);

} // namespace keld

#endif
