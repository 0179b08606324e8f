#ifndef KELD_TOOLS_BATCH_BATCH_TABLE_H
#define KELD_TOOLS_BATCH_BATCH_TABLE_H

#include "file_result.h"

#include <chrono>
#include <limits>
#include <string>
#include <vector>

namespace keld {

/// What a row of the table says. No text has control characters.
struct BatchRow
{
    std::string name;
    FileResult result;
    std::chrono::milliseconds time{};
};

inline constexpr std::size_t AnyWidth = std::numeric_limits<std::size_t>::max();

/// "completed", "failed" or "cancelled".
char const * resultName(FileResult const & result);

/// "1.2 s".
std::string timeText(std::chrono::milliseconds time);

/// The table: a row for each file, below it what went wrong and where its report is, then the sums
/// and how many files completed. Counts that are zero for all files have no column. In `columns`
/// that do not hold a table, a paragraph for each file.
std::string batchTable(std::vector<BatchRow> const & rows, std::chrono::milliseconds time,
                       std::size_t columns);

} // namespace keld

#endif
