#ifndef KELD_TOOLS_BATCH_BATCH_DISPLAY_H
#define KELD_TOOLS_BATCH_BATCH_DISPLAY_H

#include "progress_display.h"

#include <chrono>
#include <map>
#include <string>
#include <vector>

namespace keld {

/// Shows on standard error how far several runs are: on a terminal with a line for each that is
/// drawn again in place, elsewhere with a line for each step of a run.
class BatchDisplay
{
public:
    using Clock = std::chrono::steady_clock;

    /// `names` are those of all files, without control characters.
    BatchDisplay(ProgressDisplay::Style style, std::vector<std::string> const & names);
    BatchDisplay(BatchDisplay const &) = delete;
    BatchDisplay & operator=(BatchDisplay const &) = delete;

    /// Takes what is drawn off the screen.
    ~BatchDisplay();

    // A file is known by its place among the names.

    void start(std::size_t file);
    void show(std::size_t file, int percent);

    /// Prints what is left to say of a file, `words` on a line of its own, and below its name all
    /// that it has printed on standard output and standard error.
    void finish(std::size_t file, std::string const & words, std::string const & output,
                std::string const & messages);

    /// Draws what has changed, a few times a second at most.
    void update();

    /// How many milliseconds from now on `update` has something to do; -1 for never.
    int pause() const;

private:
    struct Run
    {
        int percent = -1;
        Clock::time_point start;
    };

    void draw();
    void clear();
    std::string line(std::size_t file, Run const & run, std::size_t columns) const;

    ProgressDisplay::Style m_Style;
    std::vector<std::string> const & m_Names;
    std::size_t m_LongestName = 0;
    std::size_t m_Done = 0;
    std::map<std::size_t, Run> m_Running;
    std::vector<std::size_t> m_Drawn; ///< widths of the lines on the screen
    Clock::time_point m_LastDrawing;
    bool m_HasChanged = false;
};

} // namespace keld

#endif
