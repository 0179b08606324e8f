#include "step_kernel.h"

#include <Interface_Static.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_PrinterOStream.hxx>
#include <STEPCAFControl_Controller.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <XCAFApp_Application.hxx>
#include <chrono>

namespace bench {

Kernel::Kernel()
{
    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_PrinterOStream));
}

Kernel::~Kernel()
{
    if (!m_Document.IsNull())
        XCAFApp_Application::GetApplication()->Close(m_Document);
}

double Kernel::read(std::string const & path)
{
    auto const start = std::chrono::steady_clock::now();
    STEPCAFControl_Controller::Init();
    Interface_Static::SetCVal("xstep.cascade.unit", "MM");
    Interface_Static::SetIVal("read.stepcaf.subshapes.name", 1);
    XCAFApp_Application::GetApplication()->NewDocument("MDTV-XCAF", m_Document);
    STEPCAFControl_Reader reader;
    reader.SetNameMode(true);
    reader.SetColorMode(true);
    reader.SetLayerMode(true);
    reader.SetPropsMode(true);
    reader.SetMatMode(true);
    reader.SetSHUOMode(true);
    reader.SetGDTMode(true);
    reader.SetViewMode(false);
    if (reader.ReadFile(path.c_str()) != IFSelect_RetDone || !reader.Transfer(m_Document))
        return 0;
    auto const end = std::chrono::steady_clock::now();
    return std::chrono::duration<double>(end - start).count();
}

} // namespace bench
