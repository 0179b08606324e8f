#include "transfer_progress.h"

#include <keld-translator-kit/run.h>

namespace step {

void TransferProgress::Show(Message_ProgressScope const &, Standard_Boolean)
{
    m_Run.progress(m_Start + static_cast<int>((m_End - m_Start) * GetPosition()));
}

} // namespace step
