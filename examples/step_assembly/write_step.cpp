#include "write_step.h"

#include "build_shapes.h"
#include "step_forms.h"

#include <APIHeaderSection_MakeHeader.hxx>
#include <Interface_Static.hxx>
#include <STEPCAFControl_Controller.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <StepBasic_Product.hxx>
#include <StepBasic_ProductDefinition.hxx>
#include <StepBasic_ProductDefinitionFormation.hxx>
#include <StepData_StepModel.hxx>
#include <StepRepr_NextAssemblyUsageOccurrence.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TDF_ChildIDIterator.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDataStd_Name.hxx>
#include <XCAFDoc_Centroid.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <map>
#include <vector>

namespace vise {

namespace {

TCollection_AsciiString nameOf(TDF_Label const & label)
{
    Handle(TDataStd_Name) name;
    return label.FindAttribute(TDataStd_Name::GetID(), name) ? TCollection_AsciiString(name->Get())
                                                             : TCollection_AsciiString();
}

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

using NamesOfPlaces = std::map<std::string, std::vector<TCollection_AsciiString>>;

/// The names of the places in each assembly, in their order.
NamesOfPlaces namesOfPlaces(TDocStd_Document const & document)
{
    NamesOfPlaces result;
    TDF_LabelSequence products;
    XCAFDoc_DocumentTool::ShapeTool(document.Main())->GetShapes(products);
    for (TDF_Label const & product : products) {
        TDF_LabelSequence places;
        XCAFDoc_ShapeTool::GetComponents(product, places);
        for (TDF_Label const & place : places)
            result[nameOf(product).ToCString()].push_back(nameOf(place));
    }
    return result;
}

/// The kernel's writer takes centroids, unlike shapes, for lengths in the unit of the file.
void putCentroidsInInches(TDocStd_Document const & document)
{
    constexpr double Inch = 25.4;
    for (TDF_ChildIDIterator found(document.Main(), XCAFDoc_Centroid::GetID(), true); found.More();
         found.Next()) {
        auto const centroid = Handle(XCAFDoc_Centroid)::DownCast(found.Value());
        centroid->Set(gp_Pnt(centroid->Get().XYZ() / Inch));
    }
}

/// The kernel's writer leaves out the names of those that stand where they were drawn.
void nameInstances(TDocStd_Document const & document, StepData_StepModel const & model)
{
    NamesOfPlaces const names = namesOfPlaces(document);
    std::map<std::string, std::size_t> done;
    for (int i = 1; i <= model.NbEntities(); ++i) {
        auto const place = Handle(StepRepr_NextAssemblyUsageOccurrence)::DownCast(model.Value(i));
        if (place.IsNull())
            continue;
        std::string const assembly =
            place->RelatingProductDefinition()->Formation()->OfProduct()->Name()->ToCString();
        place->SetName(new TCollection_HAsciiString(names.at(assembly).at(done[assembly]++)));
    }
}

} // namespace

void writeStep(Drawing const & drawing, Unit unit, std::string const & path)
{
    STEPCAFControl_Controller::Init();
    constexpr int Ap242 = 5;
    Interface_Static::SetIVal("write.step.schema", Ap242);
    Interface_Static::SetCVal("write.step.unit", unit == Unit::Inch ? "INCH" : "MM");
    if (unit == Unit::Inch)
        putCentroidsInInches(*drawing.document);
    STEPCAFControl_Writer writer;
    writer.SetColorMode(true);
    writer.SetLayerMode(true);
    writer.SetNameMode(true);
    writer.SetPropsMode(true);
    writer.SetMaterialMode(true);
    if (!writer.Transfer(drawing.document, STEPControl_AsIs))
        throw BuildFailure("the kernel made no STEP file of it");
    if (unit == Unit::Millimetre)
        useOffsetCurves(writer.ChangeWriter(), drawing.offsetEdges);
    Handle(StepData_StepModel) const model = writer.ChangeWriter().Model();
    useBezierForms(model);
    nameInstances(*drawing.document, *model);
    setHeader(model);
    if (writer.Write(path.c_str()) != IFSelect_RetDone)
        throw BuildFailure("the file could not be written");
}

} // namespace vise
