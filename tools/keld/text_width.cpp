#include "text_width.h"

#include "utf8.h"

#include <algorithm>

namespace keld {

namespace {

struct Range
{
    char32_t first;
    char32_t last;
};

constexpr Range Combining[] = {
    {0x0300, 0x036F}, {0x0483, 0x0489}, {0x0591, 0x05BD}, {0x0610, 0x061A},   {0x064B, 0x065F},
    {0x0E34, 0x0E3A}, {0x0E47, 0x0E4E}, {0x1AB0, 0x1AFF}, {0x1DC0, 0x1DFF},   {0x200B, 0x200F},
    {0x202A, 0x202E}, {0x2060, 0x2064}, {0x2066, 0x2069}, {0x20D0, 0x20FF},   {0x3099, 0x309A},
    {0xFE00, 0xFE0F}, {0xFE20, 0xFE2F}, {0xFEFF, 0xFEFF}, {0xE0100, 0xE01EF},
};

constexpr Range Wide[] = {
    {0x1100, 0x115F},   {0x2E80, 0x303E},   {0x3041, 0x33FF},   {0x3400, 0x4DBF},
    {0x4E00, 0x9FFF},   {0xA000, 0xA4CF},   {0xAC00, 0xD7A3},   {0xF900, 0xFAFF},
    {0xFE30, 0xFE6F},   {0xFF00, 0xFF60},   {0xFFE0, 0xFFE6},   {0x1F300, 0x1F64F},
    {0x1F680, 0x1F6FF}, {0x1F900, 0x1F9FF}, {0x20000, 0x3FFFD},
};

template <std::size_t Count> bool isIn(Range const (&ranges)[Count], char32_t code)
{
    return std::any_of(std::begin(ranges), std::end(ranges), [&](Range const & range) {
        return code >= range.first && code <= range.last;
    });
}

std::size_t widthOf(Character const & character)
{
    if (!character.valid)
        return 1;
    if (isIn(Combining, character.code))
        return 0;
    return isIn(Wide, character.code) ? 2 : 1;
}

/// How many bytes at the start of `text` fit into `width` columns.
std::size_t bytesAtStart(std::string_view text, std::size_t width)
{
    std::size_t position = 0;
    for (std::size_t used = 0; position < text.size();) {
        Character const character = characterAt(text, position);
        used += widthOf(character);
        if (used > width)
            break;
        position += character.size;
    }
    return position;
}

/// Where the part of `text` begins that reaches to its end and fits into `width` columns.
std::size_t startOfEnd(std::string_view text, std::size_t width)
{
    std::size_t rest = textWidth(text);
    std::size_t position = 0;
    while (position < text.size()) {
        Character const character = characterAt(text, position);
        // A mark goes with the character that it belongs to.
        if (rest <= width && widthOf(character) > 0)
            break;
        rest -= widthOf(character);
        position += character.size;
    }
    return position;
}

std::string blanks(std::string_view text, std::size_t width)
{
    std::size_t const used = textWidth(text);
    return std::string(used < width ? width - used : 0, ' ');
}

} // namespace

std::size_t textWidth(std::string_view text)
{
    std::size_t width = 0;
    for (std::size_t position = 0; position < text.size();) {
        Character const character = characterAt(text, position);
        width += widthOf(character);
        position += character.size;
    }
    return width;
}

std::string shortened(std::string_view text, std::size_t width)
{
    constexpr std::string_view Gap = "...";
    constexpr std::size_t Least = 3 * Gap.size();
    if (textWidth(text) <= width)
        return std::string(text);
    if (width < Least)
        return std::string(text.substr(startOfEnd(text, width)));
    std::size_t const start = bytesAtStart(text, (width - Gap.size()) / 2);
    std::size_t const room = width - Gap.size() - textWidth(text.substr(0, start));
    return std::string(text.substr(0, start))
        .append(Gap)
        .append(text.substr(startOfEnd(text, room)));
}

std::string padded(std::string_view text, std::size_t width)
{
    return std::string(text) + blanks(text, width);
}

std::string paddedLeft(std::string_view text, std::size_t width)
{
    return blanks(text, width).append(text);
}

} // namespace keld
