#include "coverage.h"

#include <keld-translator-kit/limited_warnings.h>
#include <keld-translator-kit/run.h>

namespace step {

namespace {

using transl_tk::HtmlLoggerEntry;
using translator_kit::Run;

constexpr auto Information = static_cast<HtmlLoggerEntry::EntryType>(0);
constexpr auto Warning = static_cast<HtmlLoggerEntry::EntryType>(1);
constexpr auto Error = static_cast<HtmlLoggerEntry::EntryType>(2);

void tell(Run & run, Kind kind, HtmlLoggerEntry::EntryType type, std::string const & words)
{
    HtmlLoggerEntry::create(words.c_str(), kind, type);
    if (type == Information)
        run.message(words);
}

} // namespace

void Coverage::changed(Kind kind, std::string const & how)
{
    Counts & counts = m_Counts[kind];
    ++counts.changed;
    ++counts.forms[how];
}

void Coverage::lost(Kind kind, std::string const & entity, std::string const & reason)
{
    m_Counts[kind].losses.push_back({entity, reason});
}

long long Coverage::lostCount() const
{
    long long count = 0;
    for (auto const & [kind, counts] : m_Counts)
        count += static_cast<long long>(counts.losses.size());
    return count;
}

void Coverage::report(Run & run, std::string const & where) const
{
    for (auto const & [kind, counts] : m_Counts) {
        auto const lostOnes = static_cast<long long>(counts.losses.size());
        std::string const name = HtmlLoggerEntry::baseToStringMapping(kind);
        std::string line = name + ": ";
        line += std::to_string(counts.exact + counts.changed + lostOnes) + " " + where + ", ";
        line += std::to_string(counts.exact) + " exact, ";
        line += std::to_string(counts.changed) + " changed, ";
        line += std::to_string(lostOnes) + " lost";
        tell(run, kind, Information, line);
        for (auto const & [how, count] : counts.forms) {
            std::string words = name;
            words.append(": ").append(std::to_string(count)).append(" ").append(how);
            tell(run, kind, Warning, words);
            run.message(words);
        }
        translator_kit::LimitedWarnings warnings(run);
        for (Loss const & loss : counts.losses) {
            std::string const words =
                name + " lost: " + (loss.entity.empty() ? "" : loss.entity + ": ") + loss.reason;
            tell(run, kind, Error, words);
            warnings.add(words);
        }
        warnings.end("losses of this kind");
    }
    long long const lostOnes = lostCount();
    tell(run, HtmlLoggerEntry::Total, Information,
         lostOnes == 0 ? "Nothing was lost." : std::to_string(lostOnes) + " entities were lost.");
}

} // namespace step
