#ifndef KELD_TOOLS_BATCH_RECORDS_H
#define KELD_TOOLS_BATCH_RECORDS_H

#include "file_result.h"

#include <string>
#include <string_view>

namespace keld {

// What a worker tells the process that started it, as lines.

/// That its run is at `percent`.
std::string progressRecord(int percent);

/// How its run ended; the last that it says. Control characters in the texts become \xNN.
std::string resultRecord(FileResult const & result);

/// Puts the lines together again.
class RecordReader
{
public:
    /// Takes what came through the pipe; a line may come in pieces.
    void add(std::string_view bytes);

    /// How far the run is; -1 before the first record.
    int percent() const { return m_Percent; }

    /// Whether the whole result is there.
    bool hasResult() const { return m_HasResult; }
    FileResult const & result() const { return m_Result; }

private:
    void read(std::string_view line);

    std::string m_Rest; ///< a line that has no end yet
    int m_Percent = -1;
    FileResult m_Result;
    bool m_HasResult = false;
};

} // namespace keld

#endif
