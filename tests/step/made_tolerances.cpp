#include "step/made_tolerances.h"

#include "step/made_documents.h"
#include "step/made_files.h"

#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepPrimAPI_MakeBox.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp_Explorer.hxx>
#include <TopoDS_Wire.hxx>
#include <XCAFDimTolObjects_DatumObject.hxx>
#include <XCAFDimTolObjects_DimensionObject.hxx>
#include <XCAFDimTolObjects_GeomToleranceObject.hxx>
#include <XCAFDoc_Datum.hxx>
#include <XCAFDoc_DimTolTool.hxx>
#include <XCAFDoc_Dimension.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_GeomTolerance.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <fstream>
#include <gp_Ax2.hxx>
#include <gtest/gtest.h>
#include <regex>
#include <vector>

namespace tests {

namespace {

Handle(TCollection_HAsciiString) text(char const * words)
{
    return new TCollection_HAsciiString(words);
}

Handle(XCAFDimTolObjects_DimensionObject) width()
{
    Handle(XCAFDimTolObjects_DimensionObject) const result = new XCAFDimTolObjects_DimensionObject;
    result->SetType(XCAFDimTolObjects_DimensionType_Location_LinearDistance_FromOuterToOuter);
    result->SetValue(10);
    result->SetLowerTolValue(0.125);
    result->SetUpperTolValue(0.25);
    result->AddModifier(XCAFDimTolObjects_DimensionModif_StatisticalTolerance);
    result->AddModifier(XCAFDimTolObjects_DimensionModif_FreeStateCondition);
    result->SetPlane(gp_Ax2({1, 2, 3}, {0, 1, 0}, {0, 0, 1}));
    result->SetPointTextAttach({4, 5, 6});
    result->SetPoint({7, 8, 9});
    result->SetPoint2({9, 8, 7});
    result->SetPresentation(
        BRepBuilderAPI_MakePolygon(gp_Pnt(0, 0, 0), {0, 0, 11}, {0, 12, 11}).Wire(),
        text("width drawn"));
    return result;
}

Handle(XCAFDimTolObjects_DimensionObject) hole()
{
    Handle(XCAFDimTolObjects_DimensionObject) const result = new XCAFDimTolObjects_DimensionObject;
    result->SetType(XCAFDimTolObjects_DimensionType_Size_Diameter);
    result->SetValue(8);
    result->SetClassOfTolerance(true, XCAFDimTolObjects_DimensionFormVariance_H,
                                XCAFDimTolObjects_DimensionGrade_IT7);
    return result;
}

Handle(XCAFDimTolObjects_GeomToleranceObject) position()
{
    Handle(XCAFDimTolObjects_GeomToleranceObject) const result =
        new XCAFDimTolObjects_GeomToleranceObject;
    result->SetType(XCAFDimTolObjects_GeomToleranceType_Position);
    result->SetTypeOfValue(XCAFDimTolObjects_GeomToleranceTypeValue_Diameter);
    result->SetValue(0.5);
    result->SetMaterialRequirementModifier(XCAFDimTolObjects_GeomToleranceMatReqModif_M);
    result->AddModifier(XCAFDimTolObjects_GeomToleranceModif_Free_State);
    result->SetZoneModifier(XCAFDimTolObjects_GeomToleranceZoneModif_Runout);
    return result;
}

/// Turns the zone of the tolerance, which the kernel writes as that of a runout, into one that is
/// projected by half a millimetre.
void projectZone(std::string const & path)
{
    std::string const content = contentOf(path);
    std::smatch size;
    std::smatch zone;
    ASSERT_TRUE(std::regex_search(
        content, size,
        std::regex("(#[0-9]+) = LENGTH_MEASURE_WITH_UNIT\\(LENGTH_MEASURE\\(0.5\\),#[0-9]+\\);\\s*"
                   "(#[0-9]+) = SHAPE_ASPECT")));
    ASSERT_TRUE(std::regex_search(content, zone,
                                  std::regex("RUNOUT_ZONE_DEFINITION\\((#[0-9]+),\\(\\)\\)")));
    std::ofstream(path, std::ios::binary)
        << zone.prefix() << "PROJECTED_ZONE_DEFINITION(" << zone[1] << ",()," << size[2] << ","
        << size[1] << ")" << zone.suffix();
}

void write(std::string const & path, bool isBroken)
{
    auto const document = newDocument();
    auto const shapes = XCAFDoc_DocumentTool::ShapeTool(document->Main());
    auto const tool = XCAFDoc_DocumentTool::DimTolTool(document->Main());
    TopoDS_Shape const shape = BRepPrimAPI_MakeBox(10, 20, 30).Shape();
    TDF_Label const block = named(shapes->AddShape(shape, false), "block");
    std::vector<TDF_Label> faces;
    for (TopExp_Explorer face(shape, TopAbs_FACE); face.More(); face.Next())
        faces.push_back(shapes->AddSubShape(block, face.Current()));

    TDF_Label const first = tool->AddDimension();
    tool->SetDimension(faces[0], faces[1], first);
    XCAFDoc_Dimension::Set(first)->SetObject(width());
    TDF_Label const second = tool->AddDimension();
    tool->SetDimension(faces[2], second);
    XCAFDoc_Dimension::Set(second)->SetObject(hole());

    TDF_Label const tolerance = tool->AddGeomTolerance();
    tool->SetGeomTolerance(faces[2], tolerance);
    XCAFDoc_GeomTolerance::Set(tolerance)->SetObject(position());
    // The second datum stands in the file before the first one.
    for (int i : {1, 0}) {
        TDF_Label const label = tool->AddDatum();
        TDF_LabelSequence about;
        about.Append(faces[static_cast<std::size_t>(3 + i)]);
        tool->SetDatum(about, label);
        Handle(XCAFDimTolObjects_DatumObject) const datum = new XCAFDimTolObjects_DatumObject;
        datum->SetName(text(i == 0 ? "A" : "B"));
        datum->SetPosition(i + 1);
        if (i == 1)
            datum->AddModifier(XCAFDimTolObjects_DatumSingleModif_MaximumMaterialRequirement);
        else if (isBroken)
            datum->SetModifierWithValue(XCAFDimTolObjects_DatumModifWithValue_Distance, 4.5);
        XCAFDoc_Datum::Set(label)->SetObject(datum);
        tool->SetDatumToGeomTol(label, tolerance);
    }
    writeStep(document, path);
    // The kernel writes another class than that of the document, and another kind of zone.
    replaceInFile(path, "LIMITS_AND_FITS('H','hole','9','')", "LIMITS_AND_FITS('H','hole','7','')");
    projectZone(path);
}

} // namespace

void writeTolerances(std::string const & path)
{
    write(path, false);
}

void writeBrokenTolerances(std::string const & path)
{
    // The kernel's writer leaves such a value out.
    write(path, true);
}

} // namespace tests
