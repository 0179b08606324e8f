#include "step/made_documents.h"

#include "step/made_files.h"

#include <BRepPrimAPI_MakeBox.hxx>
#include <Interface_Static.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_PrinterOStream.hxx>
#include <Quantity_Color.hxx>
#include <STEPCAFControl_Controller.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp_Explorer.hxx>
#include <TopLoc_Location.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_Area.hxx>
#include <XCAFDoc_Centroid.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_GraphNode.hxx>
#include <XCAFDoc_LayerTool.hxx>
#include <XCAFDoc_MaterialTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <XCAFDoc_Volume.hxx>
#include <fstream>
#include <gp_Trsf.hxx>
#include <gtest/gtest.h>
#include <vector>

namespace tests {

namespace {

TopLoc_Location shift(double x, double y)
{
    gp_Trsf move;
    move.SetTranslation(gp_Vec(x, y, 0));
    return TopLoc_Location(move);
}

Quantity_Color rgb(double red, double green, double blue)
{
    return {red, green, blue, Quantity_TOC_sRGB};
}

Handle(TCollection_HAsciiString) text(char const * words)
{
    return new TCollection_HAsciiString(words);
}

} // namespace

Handle(TDocStd_Document) newDocument()
{
    Handle(TDocStd_Document) document;
    XCAFApp_Application::GetApplication()->NewDocument("MDTV-XCAF", document);
    return document;
}

void writeStep(Handle(TDocStd_Document) const & document, std::string const & path)
{
    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_PrinterOStream));
    STEPCAFControl_Controller::Init();
    Interface_Static::SetCVal("write.step.unit", "MM");
    Interface_Static::SetCVal("write.step.schema", "AP242DIS");
    STEPCAFControl_Writer writer;
    writer.SetColorMode(true);
    writer.SetNameMode(true);
    writer.SetLayerMode(true);
    writer.SetPropsMode(true);
    writer.SetMaterialMode(true);
    writer.SetSHUOMode(true);
    writer.SetDimTolMode(true);
    writer.Transfer(document, STEPControl_AsIs);
    writer.Write(path.c_str());
    Interface_Static::SetCVal("write.step.schema", "AP214IS");
}

void writeShape(TopoDS_Shape const & shape, std::string const & path)
{
    auto const document = newDocument();
    named(XCAFDoc_DocumentTool::ShapeTool(document->Main())->AddShape(shape, false), "part");
    writeStep(document, path);
}

TDF_Label named(TDF_Label const & label, char const * name)
{
    TDataStd_Name::Set(label, name);
    return label;
}

void writePlant(std::string const & path)
{
    auto const document = newDocument();
    auto const shapes = XCAFDoc_DocumentTool::ShapeTool(document->Main());
    auto const colours = XCAFDoc_DocumentTool::ColorTool(document->Main());
    TDF_Label const robot =
        named(shapes->AddShape(BRepPrimAPI_MakeBox(1, 2, 3).Shape(), false), "robot");
    auto const pairOf = [&](TDF_Label const & component, std::string const & word, double distance,
                            char const * name) {
        TDF_Label const assembly = named(shapes->NewShape(), name);
        std::vector<TDF_Label> places;
        for (int i = 1; i <= 2; ++i)
            places.push_back(
                named(shapes->AddComponent(assembly, component, shift(distance * i, distance)),
                      (word + " " + std::to_string(i)).c_str()));
        return std::pair(assembly, places);
    };
    auto const [cell, robots] = pairOf(robot, "robot", 10, "cell");
    auto const [line, cells] = pairOf(cell, "cell", 100, "line");
    auto const [plant, lines] = pairOf(line, "line", 1000, "plant");
    shapes->UpdateAssemblies();

    auto const paint = [&](std::vector<TDF_Label> const & way, Quantity_Color const & colour,
                           XCAFDoc_ColorType type) {
        TDF_LabelSequence labels;
        for (TDF_Label const & label : way)
            labels.Append(label);
        Handle(XCAFDoc_GraphNode) usage;
        shapes->SetSHUO(labels, usage);
        colours->SetColor(usage->Label(), colour, type);
    };
    paint({lines[0], cells[1], robots[0]}, rgb(0, 1, 0), XCAFDoc_ColorSurf);
    paint({lines[1], cells[0]}, rgb(0, 0, 1), XCAFDoc_ColorGen);
    TopLoc_Location const place = XCAFDoc_ShapeTool::GetLocation(lines[1]) *
                                  XCAFDoc_ShapeTool::GetLocation(cells[1]) *
                                  XCAFDoc_ShapeTool::GetLocation(robots[1]);
    colours->SetInstanceColor(XCAFDoc_ShapeTool::GetShape(robot).Located(place), XCAFDoc_ColorSurf,
                              rgb(1, 0, 0));
    writeStep(document, path);
}

void writeBlock(std::string const & path)
{
    auto const document = newDocument();
    auto const shapes = XCAFDoc_DocumentTool::ShapeTool(document->Main());
    auto const layers = XCAFDoc_DocumentTool::LayerTool(document->Main());
    TopoDS_Shape const shape = BRepPrimAPI_MakeBox(10, 20, 30).Shape();
    TDF_Label const block = named(shapes->AddShape(shape, false), "block");
    XCAFDoc_DocumentTool::MaterialTool(document->Main())
        ->SetMaterial(block, text("steel"), text("cold drawn"), 7.85, text("density"),
                      text("POSITIVE_RATIO_MEASURE"));
    XCAFDoc_Area::Set(block, 2200.5);
    XCAFDoc_Volume::Set(block, 6000.25);
    XCAFDoc_Centroid::Set(block, {5, 10, 15.5});
    layers->SetLayer(block, TCollection_ExtendedString("base"));
    XCAFDoc_DocumentTool::ColorTool(document->Main())
        ->SetColor(block, rgb(1, 0, 0), XCAFDoc_ColorSurf);
    TDF_Label const face =
        shapes->AddSubShape(block, TopExp_Explorer(shape, TopAbs_FACE).Current());
    layers->SetLayer(face, TCollection_ExtendedString("painted"));
    writeStep(document, path);
}

void replaceInFile(std::string const & path, std::string const & from, std::string const & to)
{
    std::string content = contentOf(path);
    std::size_t found = content.find(from);
    EXPECT_NE(content.npos, found) << from;
    for (; found != content.npos; found = content.find(from, found + to.size()))
        content.replace(found, from.size(), to);
    std::ofstream(path, std::ios::binary) << content;
}

} // namespace tests
