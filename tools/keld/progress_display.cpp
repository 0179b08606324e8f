#include "progress_display.h"

#include <algorithm>
#include <cstdio>
#include <sys/ioctl.h>
#include <unistd.h>

namespace keld {

namespace {

constexpr int LineStep = 10;     // percent between two lines
constexpr int WidestBar = 50;    // columns
constexpr int NarrowestBar = 10; // columns
constexpr char const * ClearLine = "\r\x1b[K";

int terminalColumns()
{
    winsize size = {};
    if (ioctl(STDERR_FILENO, TIOCGWINSZ, &size) != 0 || size.ws_col == 0)
        return 80;
    return size.ws_col;
}

std::string percentText(int percent)
{
    std::string const digits = std::to_string(percent);
    return std::string(3 - digits.size(), ' ') + digits + " %";
}

} // namespace

ProgressDisplay::Style ProgressDisplay::styleFor(bool quiet)
{
    if (quiet)
        return Style::None;
    return isatty(STDERR_FILENO) ? Style::Bar : Style::Lines;
}

ProgressDisplay::ProgressDisplay(Style style, std::string const & label)
    : m_Style(style), m_Label(label)
{}

ProgressDisplay::~ProgressDisplay()
{
    if (m_Style == Style::Bar && m_Percent >= 0)
        std::fputs(ClearLine, stderr);
}

void ProgressDisplay::show(int percent)
{
    percent = std::clamp(percent, 0, 100);
    if (percent <= m_Percent)
        return;
    bool const nextStep = m_Percent < 0 || percent / LineStep > m_Percent / LineStep;
    m_Percent = percent;
    if (m_Style == Style::Bar)
        drawBar();
    else if (m_Style == Style::Lines && nextStep)
        std::fprintf(stderr, "%s %s\n", m_Label.c_str(), percentText(percent).c_str());
}

void ProgressDisplay::drawBar()
{
    std::string const percent = percentText(m_Percent);
    // The last column stays free: writing into it would wrap some terminals.
    int const free = terminalColumns() - 1 - static_cast<int>(m_Label.size() + percent.size()) - 4;
    std::string text = percent;
    if (free >= NarrowestBar) {
        int const width = std::min(free, WidestBar);
        auto const filled = static_cast<std::size_t>(width * m_Percent / 100);
        text = m_Label + " [" + std::string(filled, '#') +
               std::string(static_cast<std::size_t>(width) - filled, '.') + "] " + percent;
    }
    std::fputs((ClearLine + text).c_str(), stderr);
    std::fflush(stderr);
}

} // namespace keld
