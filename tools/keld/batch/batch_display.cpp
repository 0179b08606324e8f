#include "batch/batch_display.h"

#include "text_width.h"

#include <algorithm>
#include <cstdio>
#include <unistd.h>

namespace keld {

namespace {

using Milliseconds = std::chrono::milliseconds;

constexpr Milliseconds Shortest(100); // between two drawings
constexpr Milliseconds Longest(1000); // the seconds of the runs go on
constexpr std::size_t WidestBar = 50;
constexpr std::size_t NarrowestBar = 10;
constexpr std::size_t BarFrame = 3;     // brackets and a blank
constexpr std::size_t NumbersSize = 14; // percentage and seconds
constexpr std::size_t FairName = 20;    // a bar leaves as much of a name

std::string secondsText(BatchDisplay::Clock::duration time)
{
    return std::to_string(std::chrono::duration_cast<std::chrono::seconds>(time).count()) + " s";
}

void printBelow(std::string const & name, std::string const & text, std::FILE * stream)
{
    if (!text.empty())
        std::fprintf(stream, "--- %s ---\n%s", name.c_str(), text.c_str());
    std::fflush(stream);
}

} // namespace

BatchDisplay::BatchDisplay(ProgressDisplay::Style style, std::vector<std::string> const & names)
    : m_Style(style), m_Names(names)
{
    for (std::string const & name : names)
        m_LongestName = std::max(m_LongestName, textWidth(name));
}

BatchDisplay::~BatchDisplay()
{
    clear();
    std::fflush(stderr);
}

void BatchDisplay::start(std::size_t file)
{
    m_Running[file].start = Clock::now();
    m_HasChanged = true;
}

void BatchDisplay::show(std::size_t file, int percent)
{
    Run & run = m_Running[file];
    if (percent <= run.percent)
        return;
    if (m_Style == ProgressDisplay::Style::Lines && isNextStep(percent, run.percent))
        std::fprintf(stderr, "%s %s\n", m_Names[file].c_str(), percentText(percent).c_str());
    run.percent = percent;
    m_HasChanged = true;
}

void BatchDisplay::finish(std::size_t file, std::string const & words, std::string const & output,
                          std::string const & messages)
{
    std::string const & name = m_Names[file];
    clear();
    m_Running.erase(file);
    ++m_Done;
    if (m_Style == ProgressDisplay::Style::Bar) {
        std::size_t const columns = terminalSize(STDERR_FILENO).columns - 1;
        std::size_t const used = words.size() + 1;
        std::size_t const room = columns > used ? columns - used : 0;
        std::fprintf(stderr, "%s %s\n", shortened(name, room).c_str(), words.c_str());
    } else if (m_Style == ProgressDisplay::Style::Lines) {
        std::fprintf(stderr, "%s %s\n", name.c_str(), words.c_str());
    }
    std::fflush(stderr);
    printBelow(name, output, stdout);
    printBelow(name, messages, stderr);
    m_HasChanged = true;
    m_LastDrawing = Clock::time_point();
}

void BatchDisplay::update()
{
    if (m_Style != ProgressDisplay::Style::Bar || pause() > 0)
        return;
    draw();
    m_HasChanged = false;
    m_LastDrawing = Clock::now();
}

int BatchDisplay::pause() const
{
    if (m_Style != ProgressDisplay::Style::Bar)
        return -1;
    auto const due = m_LastDrawing + (m_HasChanged ? Shortest : Longest);
    auto const rest = std::chrono::ceil<Milliseconds>(due - Clock::now());
    return static_cast<int>(std::max<Milliseconds::rep>(rest.count(), 0));
}

void BatchDisplay::draw()
{
    clear();
    TerminalSize const size = terminalSize(STDERR_FILENO);
    std::vector<std::string> lines;
    // The last line of the screen is the cursor's.
    std::size_t const room = std::max<std::size_t>(size.rows, 3) - 2;
    for (auto const & [file, run] : m_Running) {
        if (lines.size() < room)
            lines.push_back(line(file, run, size.columns - 1));
    }
    std::string last = std::to_string(m_Done) + " of " + std::to_string(m_Names.size()) + " done";
    if (lines.size() < m_Running.size())
        last += ", " + std::to_string(m_Running.size() - lines.size()) + " more running";
    lines.push_back(shortened(last, size.columns - 1));
    for (std::string const & text : lines) {
        std::fprintf(stderr, "%s\n", text.c_str());
        m_Drawn.push_back(textWidth(text));
    }
    std::fflush(stderr);
}

/// Goes back over what is drawn, which takes more rows since a terminal became narrower.
void BatchDisplay::clear()
{
    if (m_Drawn.empty())
        return;
    std::size_t const columns = terminalSize(STDERR_FILENO).columns;
    std::size_t rows = 0;
    for (std::size_t const width : m_Drawn)
        rows += std::max<std::size_t>((width + columns - 1) / columns, 1);
    std::fprintf(stderr, "\x1b[%zuA\r\x1b[J", rows);
    m_Drawn.clear();
}

std::string BatchDisplay::line(std::size_t file, Run const & run, std::size_t columns) const
{
    int const percent = std::max(run.percent, 0);
    std::string const numbers =
        percentText(percent) + paddedLeft(secondsText(Clock::now() - run.start), NumbersSize - 6);
    std::size_t const room = columns > NumbersSize ? columns - NumbersSize : 0;
    std::size_t const reserved = std::min(m_LongestName, FairName) + 1 + BarFrame + NarrowestBar;
    bool const hasBar = room >= reserved;
    std::size_t const forName = hasBar ? room - 1 - BarFrame - NarrowestBar : room;
    std::size_t const nameSize = std::min(m_LongestName, forName);
    std::string text = padded(shortened(m_Names[file], nameSize), nameSize) + " ";
    if (hasBar)
        text += barText(percent, std::min(room - nameSize - 1 - BarFrame, WidestBar)) + " ";
    return text + numbers;
}

} // namespace keld
