#include "safe_text.h"

#include "utf8.h"

namespace keld {

namespace {

constexpr char const * Replacement = "\xEF\xBF\xBD"; // U+FFFD

/// How many bytes at `position` are one character that makes a terminal act instead of showing
/// something: 1, 2 for the controls from U+0080 on, or 0.
std::size_t controlLength(std::string_view text, std::size_t position)
{
    auto const byte = [&](std::size_t index) {
        return index < text.size() ? static_cast<unsigned char>(text[index]) : 0U;
    };
    unsigned int const first = byte(position);
    if (first < 0x20 || first == 0x7F)
        return 1;
    unsigned int const second = byte(position + 1);
    return first == 0xC2 && second >= 0x80 && second < 0xA0 ? 2 : 0;
}

/// Whether the character is one of those that stand for nothing, which a page may not hold.
bool isNoCharacter(char32_t code)
{
    return (code >= 0xFDD0 && code < 0xFDF0) || (code & 0xFFFE) == 0xFFFE;
}

std::string escaped(std::string_view bytes)
{
    constexpr char Digits[] = "0123456789abcdef";
    std::string result;
    for (char const signedByte : bytes) {
        auto const byte = static_cast<unsigned char>(signedByte);
        result += {'\\', 'x', Digits[byte >> 4], Digits[byte & 0xF]};
    }
    return result;
}

char const * entityFor(char32_t code)
{
    switch (code) {
    case '&':
        return "&amp;";
    case '<':
        return "&lt;";
    case '>':
        return "&gt;";
    case '"':
        return "&quot;";
    case '\'':
        return "&#39;";
    default:
        return nullptr;
    }
}

} // namespace

std::string terminalText(std::string_view text)
{
    std::string result;
    for (std::size_t i = 0; i < text.size();) {
        std::size_t const length = controlLength(text, i);
        if (length == 0)
            result += text[i++];
        result += escaped(text.substr(i, length));
        i += length;
    }
    return result;
}

std::string htmlText(std::string_view text)
{
    std::string result;
    result.reserve(text.size());
    for (std::size_t i = 0; i < text.size();) {
        Character const character = characterAt(text, i);
        std::string_view const bytes = text.substr(i, character.size);
        char const * const entity = entityFor(character.code);
        bool const isSpace = character.code == '\n' || character.code == '\t';
        if (!character.valid || isNoCharacter(character.code))
            result += Replacement;
        else if (entity != nullptr)
            result += entity;
        else if (controlLength(text, i) > 0 && !isSpace)
            result += escaped(bytes);
        else
            result += bytes;
        i += character.size;
    }
    return result;
}

} // namespace keld
