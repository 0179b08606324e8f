#ifndef KELD_TOOLS_PROGRESS_DISPLAY_H
#define KELD_TOOLS_PROGRESS_DISPLAY_H

#include <cstddef>
#include <functional>
#include <string>

namespace keld {

struct TerminalSize
{
    std::size_t columns = 80;
    std::size_t rows = 24;
};

/// The size of the terminal behind `descriptor`; a usual one where it has none.
TerminalSize terminalSize(int descriptor);

/// " 40 %", five columns.
std::string percentText(int percent);

/// A bar of `width` columns between brackets.
std::string barText(int percent, std::size_t width);

/// Whether a line is due where progress is shown in lines; -1 as `before` for the first.
bool isNextStep(int percent, int before);

/// Shows on standard error how far a run is.
class ProgressDisplay
{
public:
    enum class Style { None, Lines, Bar, Diverted };

    /// A bar on a terminal, lines elsewhere, nothing when `quiet`; after `divert`, what that says.
    static Style styleFor(bool quiet);

    /// From now on, displays of this process hand each new percentage to `function` and show
    /// nothing themselves.
    static void divert(std::function<void(int percent)> function);

    ProgressDisplay(Style style, std::string const & label);
    ProgressDisplay(ProgressDisplay const &) = delete;
    ProgressDisplay & operator=(ProgressDisplay const &) = delete;

    /// Takes the bar off the screen.
    ~ProgressDisplay();

    /// 0 to 100; a value below one shown already changes nothing.
    void show(int percent);

private:
    void drawBar();

    Style m_Style;
    std::string m_Label;
    int m_Percent = -1;
};

} // namespace keld

#endif
