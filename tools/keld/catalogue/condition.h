#ifndef KELD_TOOLS_CATALOGUE_CONDITION_H
#define KELD_TOOLS_CATALOGUE_CONDITION_H

#include <optional>
#include <string_view>

namespace keld {

enum class Comparison { Less, LessOrEqual, Equal, NotEqual, GreaterOrEqual, Greater };

/// What a counter of a file has to be like. A counter that the file does not have is 0.
struct Condition
{
    int counter = 0; ///< a `DataBaseType`
    Comparison comparison = Comparison::Equal;
    long long number = 0;
};

/// Reads a condition such as "faces>1000" or "spot welds <= 12": a name that `counterKey` knows,
/// one of < <= = != >= >, and a whole number. Nothing when `text` is no condition.
std::optional<Condition> parseCondition(std::string_view text);

} // namespace keld

#endif
