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

std::function<void(int percent)> & receiver()
{
    static std::function<void(int percent)> function;
    return function;
}

} // namespace

TerminalSize terminalSize(int descriptor)
{
    winsize size = {};
    if (ioctl(descriptor, TIOCGWINSZ, &size) != 0 || size.ws_col == 0 || size.ws_row == 0)
        return {};
    return {size.ws_col, size.ws_row};
}

std::string percentText(int percent)
{
    std::string const digits = std::to_string(percent);
    return std::string(3 - digits.size(), ' ') + digits + " %";
}

std::string barText(int percent, std::size_t width)
{
    std::size_t const filled = width * static_cast<std::size_t>(percent) / 100;
    return "[" + std::string(filled, '#') + std::string(width - filled, '.') + "]";
}

bool isNextStep(int percent, int before)
{
    return before < 0 || percent / LineStep > before / LineStep;
}

ProgressDisplay::Style ProgressDisplay::styleFor(bool quiet)
{
    if (receiver())
        return Style::Diverted;
    if (quiet)
        return Style::None;
    return isatty(STDERR_FILENO) ? Style::Bar : Style::Lines;
}

void ProgressDisplay::divert(std::function<void(int percent)> function)
{
    receiver() = std::move(function);
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
    bool const nextStep = isNextStep(percent, m_Percent);
    m_Percent = percent;
    if (m_Style == Style::Bar)
        drawBar();
    else if (m_Style == Style::Diverted)
        receiver()(percent);
    else if (m_Style == Style::Lines && nextStep)
        std::fprintf(stderr, "%s %s\n", m_Label.c_str(), percentText(percent).c_str());
}

void ProgressDisplay::drawBar()
{
    std::string const percent = percentText(m_Percent);
    // The last column stays free: writing into it would wrap some terminals.
    int const free = static_cast<int>(terminalSize(STDERR_FILENO).columns) - 1 -
                     static_cast<int>(m_Label.size() + percent.size()) - 4;
    std::string text = percent;
    if (free >= NarrowestBar) {
        auto const width = static_cast<std::size_t>(std::min(free, WidestBar));
        text = m_Label + " " + barText(m_Percent, width) + " " + percent;
    }
    std::fputs((ClearLine + text).c_str(), stderr);
    std::fflush(stderr);
}

} // namespace keld
