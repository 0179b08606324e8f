#include "step/kernel_reading.h"

#include <BRepGProp.hxx>
#include <BRepTools.hxx>
#include <BRep_Builder.hxx>
#include <BRep_Tool.hxx>
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
#include <TopLoc_Location.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Face.hxx>
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

TopoDS_Shape shapeWith(TopoDS_TShape * content)
{
    TopoDS_Shape shape;
    shape.TShape(content);
    return shape;
}

/// Counts loops, uses of edges and curves in the parameters of a face.
void addBoundaries(TopoDS_Face const & face, std::map<std::string, long long> & held)
{
    for (TopoDS_Iterator wire(face); wire.More(); wire.Next()) {
        if (wire.Value().ShapeType() != TopAbs_WIRE)
            continue;
        ++held["Loop"];
        for (TopoDS_Iterator edge(wire.Value()); edge.More(); edge.Next()) {
            double first = 0;
            double last = 0;
            ++held["Fin"];
            if (!BRep_Tool::CurveOnSurface(TopoDS::Edge(edge.Value()), face, first, last).IsNull())
                ++held["UV_Curve"];
        }
    }
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

std::map<std::string, long long> heldBy(TopoDS_Shape const & shape)
{
    std::map<int, std::set<TopoDS_TShape *>> seen;
    gather(shape, seen);
    auto const count = [&](int type) { return static_cast<long long>(seen[type].size()); };
    std::map<std::string, long long> held = {{"Face", count(TopAbs_FACE)},
                                             {"Edge", count(TopAbs_EDGE)},
                                             {"Shell", count(TopAbs_SHELL)},
                                             {"Body", count(TopAbs_SOLID)}};
    std::set<TopoDS_TShape *> shellsOfSolids;
    for (TopoDS_TShape * const solid : seen[TopAbs_SOLID]) {
        for (TopoDS_Iterator child(shapeWith(solid)); child.More(); child.Next())
            shellsOfSolids.insert(child.Value().TShape().get());
    }
    for (TopoDS_TShape * const shell : seen[TopAbs_SHELL])
        held["Body"] += shellsOfSolids.contains(shell) ? 0 : 1;
    for (TopoDS_TShape * const edge : seen[TopAbs_EDGE]) {
        double first = 0;
        double last = 0;
        TopLoc_Location location;
        if (!BRep_Tool::Curve(TopoDS::Edge(shapeWith(edge)), location, first, last).IsNull())
            ++held["Curve"];
    }
    for (TopoDS_TShape * const face : seen[TopAbs_FACE])
        addBoundaries(TopoDS::Face(shapeWith(face)), held);
    return held;
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
    reading.held = heldBy(reading.shape);
    reading.measures = measuresOf(reading.shape);
    return reading;
}

} // namespace tests
