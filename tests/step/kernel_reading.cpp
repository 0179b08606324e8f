#include "step/kernel_reading.h"

#include <BRepGProp.hxx>
#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <GProp_GProps.hxx>
#include <IGESControl_Reader.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_PrinterOStream.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <TCollection_AsciiString.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopoDS_Iterator.hxx>
#include <TopoDS_TShape.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <filesystem>
#include <ostream>

namespace tests {

namespace {

void gather(TopoDS_Shape const & shape, std::map<int, std::set<TopoDS_TShape *>> & seen)
{
    if (!seen[shape.ShapeType()].insert(shape.TShape().get()).second)
        return;
    for (TopoDS_Iterator child(shape); child.More(); child.Next())
        gather(child.Value(), seen);
}

Counts countsOf(TopoDS_Shape const & shape)
{
    std::map<int, std::set<TopoDS_TShape *>> seen;
    gather(shape, seen);
    return {seen[TopAbs_SOLID].size(), seen[TopAbs_FACE].size(), seen[TopAbs_EDGE].size(),
            seen[TopAbs_VERTEX].size()};
}

std::multiset<std::string> productNamesOf(TDocStd_Document const & document)
{
    TDF_LabelSequence labels;
    XCAFDoc_DocumentTool::ShapeTool(document.Main())->GetShapes(labels);
    std::multiset<std::string> names;
    for (TDF_Label const & label : labels) {
        Handle(TDataStd_Name) name;
        bool const named = label.FindAttribute(TDataStd_Name::GetID(), name);
        names.insert(named ? TCollection_AsciiString(name->Get()).ToCString() : "");
    }
    return names;
}

void readStep(std::string const & path, KernelReading & reading)
{
    STEPCAFControl_Reader reader;
    Handle(TDocStd_Document) document;
    XCAFApp_Application::GetApplication()->NewDocument("MDTV-XCAF", document);
    reader.SetGDTMode(false);
    reader.ReadFile(path.c_str());
    reader.Transfer(document);
    reading.productNames = productNamesOf(*document);
    STEPControl_Reader plain;
    plain.ReadFile(path.c_str());
    plain.TransferRoots();
    reading.shape = plain.OneShape();
}

} // namespace

void PrintTo(Counts const & counts, std::ostream * stream)
{
    *stream << counts.solids << " solids, " << counts.faces << " faces, " << counts.edges
            << " edges, " << counts.vertices << " vertices";
}

Measures measuresOf(TopoDS_Shape const & shape)
{
    GProp_GProps volume;
    GProp_GProps area;
    // Integrated adaptively: without a bound for the error, two forms of one curve give two areas.
    constexpr double Error = 1e-8;
    BRepGProp::VolumeProperties(shape, volume, Error);
    BRepGProp::SurfaceProperties(shape, area, Error);
    return {volume.Mass(), area.Mass(), area.CentreOfMass()};
}

KernelReading readByKernel(std::string const & path)
{
    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_PrinterOStream));
    KernelReading reading;
    std::string const suffix = std::filesystem::path(path).extension();
    if (suffix == ".brep") {
        BRepTools::Read(reading.shape, path.c_str(), BRep_Builder());
    } else if (suffix == ".igs" || suffix == ".iges") {
        IGESControl_Reader reader;
        reader.ReadFile(path.c_str());
        reader.TransferRoots();
        reading.shape = reader.OneShape();
    } else {
        readStep(path, reading);
    }
    reading.counts = countsOf(reading.shape);
    reading.measures = measuresOf(reading.shape);
    return reading;
}

} // namespace tests
