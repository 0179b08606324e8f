#include "batch/records.h"

#include "safe_text.h"

#include <charconv>

namespace keld {

namespace {

constexpr std::string_view Progress = "progress ";
constexpr std::string_view Count = "count ";
constexpr std::string_view Reason = "reason ";
constexpr std::string_view Report = "report ";
constexpr std::string_view Code = "code "; // closes a result

template <class... Parts> std::string line(Parts const &... parts)
{
    std::string result;
    (result.append(parts), ...);
    return result + '\n';
}

/// Takes `name` off the start of `text`.
bool begins(std::string_view & text, std::string_view name)
{
    if (!text.starts_with(name))
        return false;
    text.remove_prefix(name.size());
    return true;
}

template <class Number> Number numberIn(std::string_view text)
{
    Number number = 0;
    std::from_chars(text.data(), text.data() + text.size(), number);
    return number;
}

} // namespace

std::string progressRecord(int percent)
{
    return line(Progress, std::to_string(percent));
}

std::string resultRecord(FileResult const & result)
{
    std::string lines = line(Reason, terminalText(result.reason));
    lines += line(Report, terminalText(result.report));
    for (std::size_t i = 0; i < FileCounts; ++i)
        lines += line(Count, std::to_string(i), " ", std::to_string(result.counts[i]));
    return lines + line(Code, std::to_string(result.code));
}

void RecordReader::add(std::string_view bytes)
{
    for (std::size_t end = 0; (end = bytes.find('\n')) != bytes.npos;) {
        m_Rest += bytes.substr(0, end);
        read(m_Rest);
        m_Rest.clear();
        bytes.remove_prefix(end + 1);
    }
    m_Rest += bytes;
}

void RecordReader::read(std::string_view line)
{
    if (begins(line, Progress)) {
        m_Percent = numberIn<int>(line);
    } else if (begins(line, Reason)) {
        m_Result.reason = line;
    } else if (begins(line, Report)) {
        m_Result.report = line;
    } else if (begins(line, Count)) {
        std::size_t const blank = line.find(' ');
        auto const index = numberIn<std::size_t>(line.substr(0, blank));
        if (index < FileCounts && blank != line.npos)
            m_Result.counts[index] = numberIn<unsigned long long>(line.substr(blank + 1));
    } else if (begins(line, Code)) {
        m_Result.code = static_cast<ExitCode>(numberIn<int>(line));
        m_HasResult = true;
    }
}

} // namespace keld
