#include <keld-translator-kit/limited_warnings.h>
#include <keld-translator-kit/options.h>
#include <keld-translator-kit/run.h>

#include <algorithm>

namespace translator_kit {

namespace {

constexpr long long DefaultLimit = 10;
constexpr std::size_t QuotedLength = 40;

} // namespace

LimitedWarnings::LimitedWarnings(Run & run)
    : m_Run(run), m_Limit(run.options().integer("warning_limit").value_or(DefaultLimit))
{}

void LimitedWarnings::add(std::string const & words)
{
    if (m_Count++ < m_Limit)
        m_Run.warning(words);
}

void LimitedWarnings::end(std::string const & what)
{
    long long const more = m_Count - std::max(m_Limit, 0LL);
    if (more > 0)
        m_Run.warning(std::to_string(more) + " more " + what + ".");
}

std::string quoted(std::string_view word)
{
    std::string result(word.substr(0, QuotedLength));
    std::replace_if(
        result.begin(), result.end(), [](char c) { return c <= ' ' || c > '~'; }, '?');
    if (word.size() > QuotedLength)
        result += "...";
    return '"' + result + '"';
}

} // namespace translator_kit
