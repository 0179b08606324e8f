#ifndef KELD_TOOLS_BATCH_CAPTURED_OUTPUT_H
#define KELD_TOOLS_BATCH_CAPTURED_OUTPUT_H

#include <cstddef>
#include <cstdio>
#include <string>
#include <string_view>

namespace keld {

/// What a worker and its translator print, kept until the worker has ended. Of very much, the start
/// and the end are kept.
class CapturedOutput
{
public:
    void add(std::string_view bytes);

    bool empty() const { return m_Start.empty(); }

    /// The words, as lines. Control characters become \xNN, and what was left out is said.
    std::string text() const;

private:
    std::string m_Start;
    std::string m_End;
    std::size_t m_LeftOut = 0; ///< bytes between the two
};

} // namespace keld

#endif
