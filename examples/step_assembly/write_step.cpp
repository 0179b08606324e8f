#include "write_step.h"

#include "build_shapes.h"
#include "step_forms.h"

#include <APIHeaderSection_MakeHeader.hxx>
#include <Interface_Static.hxx>
#include <STEPCAFControl_Controller.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <StepData_StepModel.hxx>
#include <TCollection_HAsciiString.hxx>

namespace vise {

namespace {

void setHeader(Handle(StepData_StepModel) const & model)
{
    auto const text = [](char const * value) { return new TCollection_HAsciiString(value); };
    APIHeaderSection_MakeHeader header(model);
    header.SetName(text("machine vise"));
    // Fixed, so that the file is the same whenever it is written.
    header.SetTimeStamp(text("2024-03-01T12:00:00"));
    header.SetAuthorValue(1, text("Jörg Müller"));
    header.SetOrganizationValue(1, text("Workshop"));
    header.SetOriginatingSystem(text("step_assembly"));
    header.SetAuthorisation(text("none"));
    header.SetDescriptionValue(1, text("A machine vise with every kind of curve and surface"));
}

} // namespace

void writeStep(Drawing const & drawing, std::string const & path)
{
    STEPCAFControl_Controller::Init();
    constexpr int Ap242 = 5;
    Interface_Static::SetIVal("write.step.schema", Ap242);
    Interface_Static::SetCVal("write.step.unit", "INCH");
    STEPCAFControl_Writer writer;
    writer.SetColorMode(true);
    writer.SetLayerMode(true);
    writer.SetNameMode(true);
    writer.SetPropsMode(true);
    writer.SetMaterialMode(true);
    if (!writer.Transfer(drawing.document, STEPControl_AsIs))
        throw BuildFailure("the kernel made no STEP file of it");
    useExactForms(writer.ChangeWriter(), drawing.offsetEdges);
    setHeader(writer.ChangeWriter().Model());
    if (writer.Write(path.c_str()) != IFSelect_RetDone)
        throw BuildFailure("the file could not be written");
}

} // namespace vise
