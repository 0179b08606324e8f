#ifndef KELD_STEP_KERNEL_MESSAGES_H
#define KELD_STEP_KERNEL_MESSAGES_H

#include <Standard_Handle.hxx>
#include <memory>
#include <sstream>
#include <streambuf>
#include <string>
#include <vector>

class Message_Printer;

namespace translator_kit {
class Run;
}

namespace step {

/// While it lives, whatever the kernel says through its messenger, and whatever it prints on the
/// standard streams of C++, is kept here and goes to no stream.
class KernelMessages
{
public:
    KernelMessages();
    KernelMessages(KernelMessages const &) = delete;
    KernelMessages & operator=(KernelMessages const &) = delete;
    ~KernelMessages();

    /// Moves warnings and errors that came since the last call into the log of the run, as many as
    /// the option "warning_limit" says, and counts the rest. The kernel's chatter is left out.
    void tell(translator_kit::Run & run);

private:
    std::shared_ptr<std::vector<std::string>> m_Words;
    opencascade::handle<Message_Printer> m_Printer;
    std::ostringstream m_Printed;
    std::streambuf * m_Out;
    std::streambuf * m_Err;
};

} // namespace step

#endif
