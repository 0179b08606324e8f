#ifndef KELD_STEP_TRANSFER_PROGRESS_H
#define KELD_STEP_TRANSFER_PROGRESS_H

#include <Message_ProgressIndicator.hxx>
#include <functional>
#include <string>
#include <utility>

namespace translator_kit {
class Run;
}

namespace step {

/// Shows the host how far the kernel is with a step of the work, which lies between two
/// percentages of the whole, and tells the run where the kernel is. The kernel asks it for as often
/// as it likes; the run thins it out.
class TransferProgress : public Message_ProgressIndicator
{
    DEFINE_STANDARD_RTTI_INLINE(TransferProgress, Message_ProgressIndicator)

public:
    /// `lastEntity` gives words for the entity of the file that the kernel was done with last; may
    /// be empty.
    TransferProgress(translator_kit::Run & run, int start, int end,
                     std::function<std::string()> lastEntity = {})
        : m_Run(run), m_Start(start), m_End(end), m_LastEntity(std::move(lastEntity))
    {}

protected:
    void Show(Message_ProgressScope const & scope, Standard_Boolean force) override;

private:
    translator_kit::Run & m_Run;
    int m_Start;
    int m_End;
    std::function<std::string()> m_LastEntity;
};

} // namespace step

#endif
