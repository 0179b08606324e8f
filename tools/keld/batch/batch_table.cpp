#include "batch/batch_table.h"

#include "run_summary.h"
#include "text_width.h"

#include <algorithm>
#include <numeric>

namespace keld {

namespace {

constexpr std::array<char const *, FileCounts> CountNames = {"points", "parts",     "bodies",
                                                             "faces",  "triangles", "lost"};
constexpr char const * Gap = "  ";
constexpr std::size_t LeastName = 12; // of the column, when the table has to be narrow

using Cells = std::vector<std::string>;

BatchRow sumOf(std::vector<BatchRow> const & rows, std::chrono::milliseconds time)
{
    BatchRow sum = {"total", {}, time};
    sum.result.code = Success;
    for (BatchRow const & row : rows) {
        for (std::size_t i = 0; i < FileCounts; ++i)
            sum.result.counts[i] += row.result.counts[i];
    }
    return sum;
}

/// The counts that the table has columns for.
std::vector<std::size_t> shownCounts(BatchRow const & sum)
{
    std::vector<std::size_t> shown;
    for (std::size_t i = 0; i < FileCounts; ++i) {
        if (sum.result.counts[i] > 0 || i == Lost)
            shown.push_back(i);
    }
    return shown;
}

bool hasCounts(BatchRow const & row)
{
    auto const & counts = row.result.counts;
    return row.result.code == Success ||
           std::any_of(counts.begin(), counts.end(), [](auto count) { return count > 0; });
}

/// The cells of a row behind the name.
Cells cellsOf(BatchRow const & row, std::string const & result,
              std::vector<std::size_t> const & counts)
{
    Cells cells = {result, timeText(row.time)};
    for (std::size_t const count : counts)
        cells.push_back(hasCounts(row) ? std::to_string(row.result.counts[count]) : "");
    return cells;
}

/// `text` in lines of at most `columns`, all indented; a longer word has a line of its own.
std::string paragraph(std::string const & text, std::size_t columns)
{
    std::string lines;
    std::string line;
    for (std::size_t start = 0; start <= text.size();) {
        std::size_t const end = std::min(text.find(' ', start), text.size());
        std::string const word = text.substr(start, end - start);
        if (!line.empty() && textWidth(line) + 1 + textWidth(word) > columns) {
            lines += line + "\n";
            line.clear();
        }
        line += (line.empty() ? Gap : " ") + word;
        start = end + 1;
    }
    return lines + line + "\n";
}

std::string notes(BatchRow const & row, std::size_t columns)
{
    std::string text;
    if (!row.result.reason.empty())
        text += paragraph(row.result.reason, columns);
    if (!row.result.report.empty())
        text += Gap + ("report: " + row.result.report) + "\n";
    return text;
}

std::string completedText(std::vector<BatchRow> const & rows)
{
    auto const count = [&](RunStatus status) {
        return std::count_if(rows.begin(), rows.end(), [&](BatchRow const & row) {
            return runStatus(row.result.code) == status;
        });
    };
    std::string text = std::to_string(count(Completed)) + " of " + std::to_string(rows.size()) +
                       " files completed";
    if (auto const failed = count(Failed))
        text += ", " + std::to_string(failed) + " failed";
    if (auto const cancelled = count(Cancelled))
        text += ", " + std::to_string(cancelled) + " cancelled";
    return text + ".";
}

std::string tableLine(std::string const & name, std::size_t nameWidth, Cells const & cells,
                      std::vector<std::size_t> const & widths)
{
    std::string line = padded(shortened(name, nameWidth), nameWidth);
    for (std::size_t i = 0; i < cells.size(); ++i)
        line += Gap + (i == 0 ? padded(cells[i], widths[i]) : paddedLeft(cells[i], widths[i]));
    line.erase(line.find_last_not_of(' ') + 1);
    return line + "\n";
}

std::string paragraphOf(std::string const & name, Cells const & cells,
                        std::vector<std::size_t> const & counts, std::size_t columns)
{
    std::string text = cells[0].empty() ? cells[1] : cells[0] + Gap + cells[1];
    for (std::size_t i = 0; i < counts.size(); ++i) {
        if (!cells[2 + i].empty())
            text += ", " + std::string(CountNames[counts[i]]) + ": " + cells[2 + i];
    }
    return shortened(name, columns) + "\n" + paragraph(text, columns);
}

} // namespace

char const * resultName(FileResult const & result)
{
    return statusName(runStatus(result.code));
}

std::string timeText(std::chrono::milliseconds time)
{
    auto const tenths = (time.count() + 50) / 100;
    return std::to_string(tenths / 10) + "." + std::to_string(tenths % 10) + " s";
}

std::string batchTable(std::vector<BatchRow> const & rows, std::chrono::milliseconds time,
                       std::size_t columns)
{
    BatchRow const sum = sumOf(rows, time);
    std::vector<std::size_t> const counts = shownCounts(sum);
    Cells title = {"result", "time"};
    for (std::size_t const count : counts)
        title.emplace_back(CountNames[count]);

    std::vector<Cells> table;
    table.reserve(rows.size() + 1);
    for (BatchRow const & row : rows)
        table.push_back(cellsOf(row, resultName(row.result), counts));
    table.push_back(cellsOf(sum, "", counts));

    std::vector<std::size_t> widths;
    for (std::size_t i = 0; i < title.size(); ++i) {
        widths.push_back(title[i].size());
        for (Cells const & cells : table)
            widths[i] = std::max(widths[i], cells[i].size());
    }
    std::size_t nameWidth = sum.name.size();
    for (BatchRow const & row : rows)
        nameWidth = std::max(nameWidth, textWidth(row.name));
    std::size_t const numbers = std::accumulate(widths.begin(), widths.end(), 2 * widths.size());
    bool const fits = columns >= numbers + std::min(nameWidth, LeastName);
    if (fits)
        nameWidth = std::min(nameWidth, columns - numbers);

    std::string text = fits ? tableLine("file", nameWidth, title, widths) : "";
    for (std::size_t i = 0; i < rows.size(); ++i) {
        text += fits ? tableLine(rows[i].name, nameWidth, table[i], widths)
                     : paragraphOf(rows[i].name, table[i], counts, columns);
        text += notes(rows[i], columns);
    }
    text += fits ? tableLine(sum.name, nameWidth, table.back(), widths)
                 : paragraphOf(sum.name, table.back(), counts, columns);
    std::string const last = completedText(rows);
    return text + (fits ? last + "\n" : paragraph(last, columns));
}

} // namespace keld
