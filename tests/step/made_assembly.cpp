#include "step/made_files.h"

#include <BRepPrimAPI_MakeBox.hxx>
#include <BRepPrimAPI_MakeCylinder.hxx>
#include <Interface_Static.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_PrinterOStream.hxx>
#include <Quantity_Color.hxx>
#include <STEPCAFControl_Controller.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp.hxx>
#include <TopLoc_Location.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_LayerTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <gp_Trsf.hxx>

namespace tests {

namespace {

Quantity_Color rgb(double red, double green, double blue)
{
    return {red, green, blue, Quantity_TOC_sRGB};
}

TopLoc_Location shift(double x, double y, double z)
{
    gp_Trsf move;
    move.SetTranslation(gp_Vec(x, y, z));
    return TopLoc_Location(move);
}

TopLoc_Location quarterTurn()
{
    gp_Trsf turn;
    turn.SetRotation(gp_Ax1({0, 0, 0}, {0, 0, 1}), M_PI_2);
    gp_Trsf move;
    move.SetTranslation(gp_Vec(100, 0, 0));
    return TopLoc_Location(move * turn);
}

} // namespace

void writeRig(std::string const & path)
{
    Handle(TDocStd_Document) document;
    XCAFApp_Application::GetApplication()->NewDocument("MDTV-XCAF", document);
    auto const shapes = XCAFDoc_DocumentTool::ShapeTool(document->Main());
    auto const colours = XCAFDoc_DocumentTool::ColorTool(document->Main());
    auto const layers = XCAFDoc_DocumentTool::LayerTool(document->Main());

    TopoDS_Shape const plateShape = BRepPrimAPI_MakeBox(40, 30, 5).Shape();
    TDF_Label const plate = shapes->AddShape(plateShape, false);
    TDataStd_Name::Set(plate, "plate");
    TDF_Label const bolt = shapes->AddShape(BRepPrimAPI_MakeCylinder(3, 20).Shape(), false);
    TDataStd_Name::Set(bolt, "bolt");
    TDF_Label const pair = shapes->NewShape();
    TDataStd_Name::Set(pair, "pair");
    TDataStd_Name::Set(shapes->AddComponent(pair, bolt, shift(0, 0, 0)), "left bolt");
    TDataStd_Name::Set(shapes->AddComponent(pair, bolt, shift(10, 0, 0)), "right bolt");
    TDF_Label const rig = shapes->NewShape();
    TDataStd_Name::Set(rig, "rig");
    TDataStd_Name::Set(shapes->AddComponent(rig, plate, shift(0, 0, 0)), "lower plate");
    TDataStd_Name::Set(shapes->AddComponent(rig, plate, quarterTurn()), "turned plate");
    TDF_Label const bluePair = shapes->AddComponent(rig, pair, shift(5, 5, 5));
    TDataStd_Name::Set(bluePair, "blue pair");
    shapes->UpdateAssemblies();

    colours->SetColor(plate, rgb(1, 0, 0), XCAFDoc_ColorSurf);
    TopTools_IndexedMapOfShape faces;
    TopExp::MapShapes(plateShape, TopAbs_FACE, faces);
    colours->SetColor(shapes->AddSubShape(plate, faces(1)), rgb(0, 1, 0), XCAFDoc_ColorSurf);
    colours->SetColor(bluePair, rgb(0, 0, 1), XCAFDoc_ColorSurf);
    layers->SetLayer(plate, TCollection_ExtendedString("base"));

    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_PrinterOStream));
    STEPCAFControl_Controller::Init();
    Interface_Static::SetCVal("write.step.unit", "INCH");
    STEPCAFControl_Writer writer;
    writer.SetColorMode(true);
    writer.SetLayerMode(true);
    writer.SetNameMode(true);
    writer.Transfer(document, STEPControl_AsIs);
    writer.Write(path.c_str());
}

} // namespace tests
