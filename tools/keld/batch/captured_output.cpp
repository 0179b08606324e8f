#include "batch/captured_output.h"

#include "safe_text.h"

#include <algorithm>

namespace keld {

namespace {

constexpr std::size_t Half = 4 << 20;

/// `text` line by line, each safe for a terminal.
std::string safeLines(std::string_view text)
{
    std::string result;
    while (!text.empty()) {
        std::size_t const end = std::min(text.find('\n'), text.size());
        std::string_view line = text.substr(0, end);
        text.remove_prefix(std::min(end + 1, text.size()));
        if (line.ends_with('\r'))
            line.remove_suffix(1);
        for (std::size_t tab = 0; (tab = line.find('\t')) != line.npos;) {
            result += terminalText(line.substr(0, tab)) + '\t';
            line.remove_prefix(tab + 1);
        }
        result += terminalText(line) + '\n';
    }
    return result;
}

} // namespace

void CapturedOutput::add(std::string_view bytes)
{
    std::size_t const fits = std::min(Half - m_Start.size(), bytes.size());
    m_Start += bytes.substr(0, fits);
    m_End += bytes.substr(fits);
    if (m_End.size() > 2 * Half) {
        std::size_t const surplus = m_End.size() - Half;
        m_End.erase(0, surplus);
        m_LeftOut += surplus;
    }
}

std::string CapturedOutput::text() const
{
    if (m_LeftOut == 0)
        return safeLines(m_Start + m_End);
    return safeLines(m_Start) + "[" + std::to_string(m_LeftOut) + " bytes are left out here]\n" +
           safeLines(m_End);
}

} // namespace keld
