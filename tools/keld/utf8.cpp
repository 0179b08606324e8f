#include "utf8.h"

namespace keld {

Character characterAt(std::string_view text, std::size_t position)
{
    auto const first = static_cast<unsigned char>(text[position]);
    if (first < 0x80)
        return {1, first, true};
    std::size_t const size = first >= 0xF0 ? 4 : first >= 0xE0 ? 3 : 2;
    if (first < 0xC2 || first > 0xF4 || position + size > text.size())
        return {};
    char32_t code = first & (0xFFU >> (size + 1));
    for (std::size_t i = 1; i < size; ++i) {
        auto const next = static_cast<unsigned char>(text[position + i]);
        if ((next & 0xC0) != 0x80)
            return {};
        code = (code << 6) | (next & 0x3FU);
    }
    constexpr char32_t Smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    bool const surrogate = code >= 0xD800 && code < 0xE000;
    if (code < Smallest[size] || code > 0x10FFFF || surrogate)
        return {};
    return {size, code, true};
}

} // namespace keld
