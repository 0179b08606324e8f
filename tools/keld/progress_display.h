#ifndef KELD_TOOLS_PROGRESS_DISPLAY_H
#define KELD_TOOLS_PROGRESS_DISPLAY_H

#include <string>

namespace keld {

/// Shows on standard error how far a run is.
class ProgressDisplay
{
public:
    enum class Style { None, Lines, Bar };

    /// A bar on a terminal, lines elsewhere, nothing when `quiet`.
    static Style styleFor(bool quiet);

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
