#include "kernel_messages.h"

#include <keld-translator-kit/limited_warnings.h>

#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_Printer.hxx>
#include <Message_PrinterOStream.hxx>
#include <TCollection_AsciiString.hxx>
#include <iostream>
#include <set>

namespace step {

namespace {

using Words = std::vector<std::string>;

class Printer : public Message_Printer
{
    DEFINE_STANDARD_RTTI_INLINE(Printer, Message_Printer)

public:
    explicit Printer(std::shared_ptr<Words> words) : m_Words(std::move(words))
    {
        SetTraceLevel(Message_Warning);
    }

protected:
    void send(TCollection_AsciiString const & text, Message_Gravity const gravity) const override
    {
        if (gravity >= Message_Warning)
            m_Words->emplace_back(text.ToCString());
    }

private:
    std::shared_ptr<Words> m_Words;
};

} // namespace

KernelMessages::KernelMessages()
    : m_Words(std::make_shared<Words>()), m_Printer(new Printer(m_Words)),
      m_Out(std::cout.rdbuf(m_Printed.rdbuf())), m_Err(std::cerr.rdbuf(m_Printed.rdbuf()))
{
    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_PrinterOStream));
    Message::DefaultMessenger()->AddPrinter(m_Printer);
}

KernelMessages::~KernelMessages()
{
    Message::DefaultMessenger()->RemovePrinter(m_Printer);
    std::cout.rdbuf(m_Out);
    std::cerr.rdbuf(m_Err);
}

void KernelMessages::tell(translator_kit::Run & run)
{
    translator_kit::LimitedWarnings warnings(run);
    std::set<std::string> told;
    for (std::string const & words : *m_Words) {
        if (told.insert(words).second)
            warnings.add("Open CASCADE: " + words);
    }
    warnings.end("messages of Open CASCADE");
    m_Words->clear();
}

} // namespace step
