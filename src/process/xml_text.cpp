#include "process/xml_text.h"

#include <optional>

namespace transl_tk::xml {

namespace {

/// Takes one character off the front of `text`; none when it does not begin with valid UTF-8.
std::optional<char32_t> takeCharacter(std::string_view & text)
{
    auto const byte = [&](std::size_t i) { return static_cast<unsigned char>(text[i]); };
    unsigned char const first = byte(0);
    std::size_t const length = first < 0x80 ? 1 : first < 0xE0 ? 2 : first < 0xF0 ? 3 : 4;
    bool const isLead = first < 0x80 || (first >= 0xC2 && first <= 0xF4);
    if (!isLead || text.size() < length)
        return std::nullopt;

    char32_t character = length == 1 ? first : first & (0x7FU >> length);
    for (std::size_t i = 1; i < length; ++i) {
        if ((byte(i) & 0xC0) != 0x80)
            return std::nullopt;
        character = (character << 6) | (byte(i) & 0x3FU);
    }
    char32_t const smallest[] = {0, 0, 0x80, 0x800, 0x10000};
    if (character < smallest[length])
        return std::nullopt;
    text.remove_prefix(length);
    return character;
}

} // namespace

bool canHold(char32_t character)
{
    return character == 0x9 || character == 0xA || character == 0xD ||
           (character >= 0x20 && character <= 0xD7FF) ||
           (character >= 0xE000 && character <= 0xFFFD) ||
           (character >= 0x10000 && character <= 0x10FFFF);
}

bool canHold(std::string_view text)
{
    while (!text.empty()) {
        auto const character = takeCharacter(text);
        if (!character || !canHold(*character))
            return false;
    }
    return true;
}

std::string utf8(char32_t character)
{
    if (character < 0x80)
        return {static_cast<char>(character)};
    return {static_cast<char>(0xC0 | (character >> 6)),
            static_cast<char>(0x80 | (character & 0x3F))};
}

} // namespace transl_tk::xml
