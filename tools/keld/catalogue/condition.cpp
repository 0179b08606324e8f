#include "catalogue/condition.h"

#include "catalogue/metadata.h"

#include <charconv>

namespace keld {

namespace {

/// Those of two characters stand before those that they begin with.
constexpr struct
{
    std::string_view sign;
    Comparison comparison;
} Signs[] = {
    {"<=", Comparison::LessOrEqual}, {">=", Comparison::GreaterOrEqual},
    {"!=", Comparison::NotEqual},    {"<", Comparison::Less},
    {">", Comparison::Greater},      {"=", Comparison::Equal},
};

std::string_view trimmed(std::string_view text)
{
    std::size_t const first = text.find_first_not_of(' ');
    if (first == text.npos)
        return {};
    return text.substr(first, text.find_last_not_of(' ') - first + 1);
}

} // namespace

std::optional<Condition> parseCondition(std::string_view text)
{
    std::size_t const start = text.find_first_of("<>=!");
    if (start == text.npos)
        return std::nullopt;
    auto const counter = counterKey(trimmed(text.substr(0, start)));
    std::string_view const rest = text.substr(start);
    for (auto const & [sign, comparison] : Signs) {
        if (!rest.starts_with(sign))
            continue;
        std::string_view const digits = trimmed(rest.substr(sign.size()));
        long long number = 0;
        auto const end = std::from_chars(digits.data(), digits.data() + digits.size(), number);
        if (!counter || end.ec != std::errc() || end.ptr != digits.data() + digits.size())
            return std::nullopt;
        return Condition{*counter, comparison, number};
    }
    return std::nullopt;
}

} // namespace keld
