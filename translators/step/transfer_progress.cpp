#include "transfer_progress.h"

#include <keld-translator-kit/run.h>

#include <Message_ProgressScope.hxx>
#include <cmath>
#include <string>

namespace step {

namespace {

/// What the kernel is at, such as "Face, 12 of 269 done"; empty where it has no name for it.
std::string wordsOf(Message_ProgressScope const & scope)
{
    if (scope.Name() == nullptr)
        return {};
    constexpr double Most = 1e9;
    double const done = scope.Value();
    double const all = scope.MaxValue();
    std::string words = scope.Name();
    if (done >= 0 && done <= all && all < Most)
        words += ", " + std::to_string(std::lround(done)) + " of " +
                 std::to_string(std::lround(all)) + " done";
    return words;
}

} // namespace

void TransferProgress::Show(Message_ProgressScope const & scope, Standard_Boolean)
{
    std::string words = wordsOf(scope);
    std::string const last = m_LastEntity ? m_LastEntity() : std::string();
    if (!last.empty())
        words += (words.empty() ? "" : ", ") + ("last entity " + last);
    m_Run.at(words);
    m_Run.progress(m_Start + static_cast<int>((m_End - m_Start) * GetPosition()));
}

} // namespace step
