#include "point_line.h"

#include <keld-translator-kit/limited_warnings.h>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace xyz {

namespace {

bool isBlank(char c)
{
    return c == ' ' || c == '\t';
}

bool isSeparator(char c)
{
    return isBlank(c) || c == ',' || c == ';';
}

void passBlanks(char const *& text, char const * end)
{
    while (text != end && isBlank(*text))
        ++text;
}

/// Blanks, among which may stand one comma or semicolon.
void passSeparator(char const *& text, char const * end)
{
    passBlanks(text, end);
    if (text != end && isSeparator(*text))
        ++text;
    passBlanks(text, end);
}

/// The word at `text` in quotes, fit for a log.
std::string quoted(char const * text, char const * end)
{
    auto const length = std::find_if(text, end, isSeparator) - text;
    return translator_kit::quoted({text, static_cast<std::size_t>(length)});
}

std::string readNumber(char const *& text, char const * end, double & number)
{
    if (isSeparator(*text))
        return "a number is missing";
    char const * first = text;
    if (end - first > 1 && *first == '+' && first[1] != '-')
        ++first;
    auto const [rest, error] = std::from_chars(first, end, number);
    if (error == std::errc::invalid_argument || (rest != end && !isSeparator(*rest)))
        return quoted(text, end) + " is no number";
    if (error == std::errc::result_out_of_range)
        return "the number " + quoted(text, end) + " is out of range";
    if (!std::isfinite(number))
        return quoted(text, end) + " is not a finite number";
    text = rest;
    return {};
}

} // namespace

LineKind readLine(std::string_view line, double (&position)[3], std::string & fault)
{
    char const * text = line.data();
    char const * end = text + line.size();
    while (end != text && (isBlank(end[-1]) || end[-1] == '\r'))
        --end;
    passBlanks(text, end);
    if (text == end || *text == '#')
        return LineKind::Nothing;

    int count = 0;
    for (double & number : position) {
        if (count > 0)
            passSeparator(text, end);
        if (text == end) {
            fault = count == 1 ? "only one number" : "only two numbers";
            return LineKind::Fault;
        }
        fault = readNumber(text, end, number);
        if (!fault.empty())
            return LineKind::Fault;
        ++count;
    }
    if (text != end) {
        fault = "more than three numbers";
        return LineKind::Fault;
    }
    return LineKind::Point;
}

} // namespace xyz
