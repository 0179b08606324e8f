#ifndef KELD_TOOLS_NUMBERS_H
#define KELD_TOOLS_NUMBERS_H

#include <charconv>
#include <string>

namespace keld {

/// A number with as many digits as it takes to tell it from all others.
inline std::string numberText(double number)
{
    char digits[32];
    return {digits, std::to_chars(digits, digits + sizeof(digits), number).ptr};
}

} // namespace keld

#endif
