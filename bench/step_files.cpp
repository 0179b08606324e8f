#include "step_files.h"

#include "fresh_process.h"

#include <BRepBuilderAPI_MakeEdge.hxx>
#include <BRepBuilderAPI_MakeFace.hxx>
#include <BRepBuilderAPI_MakePolygon.hxx>
#include <BRepBuilderAPI_MakeWire.hxx>
#include <BRepFilletAPI_MakeFillet.hxx>
#include <BRepOffsetAPI_ThruSections.hxx>
#include <BRepPrimAPI_MakePrism.hxx>
#include <BRep_Tool.hxx>
#include <GeomAPI_Interpolate.hxx>
#include <Geom_BSplineCurve.hxx>
#include <Geom_Line.hxx>
#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_PrinterOStream.hxx>
#include <Precision.hxx>
#include <Quantity_Color.hxx>
#include <STEPCAFControl_Controller.hxx>
#include <STEPCAFControl_Writer.hxx>
#include <TColgp_HArray1OfPnt.hxx>
#include <TDataStd_Name.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp.hxx>
#include <TopLoc_Location.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Face.hxx>
#include <TopoDS_Wire.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <gp_Circ.hxx>
#include <gp_Trsf.hxx>
#include <stdexcept>

namespace bench {

namespace {

/// How much a file holds.
struct Recipe
{
    char const * name;
    int plates;
    int holes; ///< of a plate, along each of its sides
    int bodies;
};

constexpr Recipe Recipes[] = {{"small", 1, 1, 0}, {"middle", 8, 5, 3}, {"large", 20, 9, 10}};

TopoDS_Wire circle(double x, double y, double radius)
{
    gp_Circ const circle(gp_Ax2({x, y, 0}, {0, 0, 1}), radius);
    return BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(circle).Edge()).Wire();
}

/// No two plates of a file are the same. Those with more than one hole have round corners.
TopoDS_Shape drilledPlate(int number, int holes)
{
    double const pitch = 12 + 0.1 * number;
    double const side = pitch * (holes + 1);
    double const thickness = 4 + 0.25 * number;
    BRepBuilderAPI_MakePolygon outline;
    outline.Add(gp_Pnt(0, 0, 0));
    outline.Add(gp_Pnt(side, 0, 0));
    outline.Add(gp_Pnt(side, side, 0));
    outline.Add(gp_Pnt(0, side, 0));
    outline.Close();
    BRepBuilderAPI_MakeFace face(outline.Wire());
    for (int i = 1; i <= holes; ++i) {
        for (int k = 1; k <= holes; ++k)
            face.Add(
                TopoDS::Wire(circle(i * pitch, k * pitch, 2 + 0.01 * (i * holes + k)).Reversed()));
    }
    TopoDS_Shape const plate = BRepPrimAPI_MakePrism(face.Face(), gp_Vec(0, 0, thickness)).Shape();

    if (holes < 2)
        return plate;
    BRepFilletAPI_MakeFillet rounding(plate);
    TopTools_IndexedMapOfShape edges;
    TopExp::MapShapes(plate, TopAbs_EDGE, edges);
    for (int i = 1; i <= edges.Extent(); ++i) {
        TopoDS_Edge const & edge = TopoDS::Edge(edges(i));
        double first = 0;
        double last = 0;
        auto const line = Handle(Geom_Line)::DownCast(BRep_Tool::Curve(edge, first, last));
        bool const isUpright =
            !line.IsNull() && line->Lin().Direction().IsParallel({0, 0, 1}, Precision::Angular());
        gp_Pnt const at = BRep_Tool::Pnt(TopExp::FirstVertex(edge));
        bool const isAtCorner =
            (at.X() < 1 || at.X() > side - 1) && (at.Y() < 1 || at.Y() > side - 1);
        if (isUpright && isAtCorner)
            rounding.Add(2.5, edge);
    }
    return rounding.Shape();
}

TopoDS_Wire wavyRing(int number, int level)
{
    constexpr int Points = 12;
    Handle(TColgp_HArray1OfPnt) const points = new TColgp_HArray1OfPnt(1, Points);
    for (int i = 0; i < Points; ++i) {
        double const angle = 2 * M_PI * i / Points;
        double const radius = 20 + number + 3 * std::sin(3 * angle + 0.7 * level) + level % 3;
        points->SetValue(i + 1, {radius * std::cos(angle), radius * std::sin(angle), 8.0 * level});
    }
    GeomAPI_Interpolate ring(points, true, Precision::Confusion());
    ring.Perform();
    return BRepBuilderAPI_MakeWire(BRepBuilderAPI_MakeEdge(ring.Curve()).Edge()).Wire();
}

/// A body whose wall is one surface of splines.
TopoDS_Shape wavyBody(int number)
{
    constexpr int Levels = 10;
    BRepOffsetAPI_ThruSections sections(true);
    for (int level = 0; level < Levels; ++level)
        sections.AddWire(wavyRing(number, level));
    return sections.Shape();
}

class Writing
{
public:
    Writing()
    {
        XCAFApp_Application::GetApplication()->NewDocument("MDTV-XCAF", m_Document);
        m_Shapes = XCAFDoc_DocumentTool::ShapeTool(m_Document->Main());
        m_Colours = XCAFDoc_DocumentTool::ColorTool(m_Document->Main());
    }

    TDF_Label addPart(TopoDS_Shape const & shape, std::string const & name, double red)
    {
        TDF_Label const part = m_Shapes->AddShape(shape, false);
        TDataStd_Name::Set(part, name.c_str());
        m_Colours->SetColor(part, {red, 0.5, 0.25, Quantity_TOC_sRGB}, XCAFDoc_ColorSurf);
        TopTools_IndexedMapOfShape faces;
        TopExp::MapShapes(shape, TopAbs_FACE, faces);
        for (int i = 1; i <= faces.Extent(); i += 7)
            m_Colours->SetColor(m_Shapes->AddSubShape(part, faces(i)),
                                {0.25, red, 0.75, Quantity_TOC_sRGB}, XCAFDoc_ColorSurf);
        return part;
    }

    TDF_Label newAssembly(std::string const & name)
    {
        TDF_Label const assembly = m_Shapes->NewShape();
        TDataStd_Name::Set(assembly, name.c_str());
        return assembly;
    }

    void place(TDF_Label const & assembly, TDF_Label const & what, int number)
    {
        gp_Trsf move;
        move.SetRotation(gp_Ax1({0, 0, 0}, {0, 0, 1}), 0.1 * number);
        move.SetTranslationPart(gp_Vec(200.0 * number, 10, 0));
        TDF_Label const placed = m_Shapes->AddComponent(assembly, what, TopLoc_Location(move));
        TDataStd_Name::Set(placed, ("place " + std::to_string(number)).c_str());
    }

    void write(std::string const & path)
    {
        m_Shapes->UpdateAssemblies();
        STEPCAFControl_Controller::Init();
        STEPCAFControl_Writer writer;
        if (!writer.Transfer(m_Document, STEPControl_AsIs) ||
            writer.Write(path.c_str()) != IFSelect_RetDone)
            throw std::runtime_error("the file " + path + " could not be written");
    }

private:
    Handle(TDocStd_Document) m_Document;
    Handle(XCAFDoc_ShapeTool) m_Shapes;
    Handle(XCAFDoc_ColorTool) m_Colours;
};

void write(Recipe const & recipe, std::string const & path)
{
    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_PrinterOStream));
    Writing writing;
    std::vector<TDF_Label> parts;
    for (int i = 0; i < recipe.plates; ++i)
        parts.push_back(
            writing.addPart(drilledPlate(i, recipe.holes), "plate " + std::to_string(i), 0.02 * i));
    for (int i = 0; i < recipe.bodies; ++i)
        parts.push_back(writing.addPart(wavyBody(i), "body " + std::to_string(i), 0.01 * i));
    if (parts.size() > 1) {
        TDF_Label const machine = writing.newAssembly("machine");
        constexpr std::size_t PartsAGroup = 4;
        for (std::size_t i = 0; i < parts.size(); i += PartsAGroup) {
            TDF_Label const group = writing.newAssembly("group " + std::to_string(i / PartsAGroup));
            for (std::size_t k = i; k < std::min(i + PartsAGroup, parts.size()); ++k) {
                writing.place(group, parts[k], static_cast<int>(2 * k));
                writing.place(group, parts[k], static_cast<int>(2 * k + 1));
            }
            writing.place(machine, group, static_cast<int>(2 * i));
            writing.place(machine, group, static_cast<int>(2 * i + 1));
        }
    }
    writing.write(path);
}

} // namespace

StepFiles::StepFiles()
{
    std::string pattern = std::filesystem::temp_directory_path() / "keld_bench_step_XXXXXX";
    if (::mkdtemp(pattern.data()) == nullptr)
        throw std::runtime_error("there is no place for the files");
    m_Folder = pattern;
    for (Recipe const & recipe : Recipes) {
        // The kernel is not to be warm in this process before it is measured.
        double const isWritten = inFreshProcess([&] {
            try {
                write(recipe, m_Folder + "/" + recipe.name + ".step");
                return 1.0;
            } catch (...) {
                return 0.0;
            }
        });
        if (isWritten == 0)
            throw std::runtime_error("the file could not be made: " + std::string(recipe.name));
    }
}

StepFiles::~StepFiles()
{
    std::filesystem::remove_all(m_Folder);
}

std::vector<StepFile> StepFiles::all() const
{
    std::vector<StepFile> result;
    for (Recipe const & recipe : Recipes)
        result.push_back({recipe.name, m_Folder + "/" + recipe.name + ".step"});
    char const * const given = std::getenv("KELD_CAD_DATA");
    std::filesystem::path const samples = given != nullptr ? given : KELD_BENCH_SAMPLES;
    std::error_code isMissing;
    for (auto const & entry : std::filesystem::directory_iterator(samples, isMissing)) {
        auto const suffix = entry.path().extension();
        if (suffix == ".step" || suffix == ".stp")
            result.push_back({entry.path().filename(), entry.path()});
    }
    return result;
}

} // namespace bench
