#include "measure.h"

#include "build_shapes.h"

#include <BRepGProp.hxx>
#include <BRep_Tool.hxx>
#include <GProp_GProps.hxx>
#include <NCollection_DataMap.hxx>
#include <STEPCAFControl_Reader.hxx>
#include <TDF_LabelMapHasher.hxx>
#include <TDF_LabelSequence.hxx>
#include <TDocStd_Document.hxx>
#include <TopExp.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <XCAFApp_Application.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <algorithm>
#include <cmath>
#include <cstdio>

namespace vise {

namespace {

int countOf(TopoDS_Shape const & shape, TopAbs_ShapeEnum kind)
{
    TopTools_IndexedMapOfShape found;
    TopExp::MapShapes(shape, kind, found);
    return found.Extent();
}

int realEdgesOf(TopoDS_Shape const & shape)
{
    auto const edges = edgesOf(shape);
    return static_cast<int>(std::count_if(edges.begin(), edges.end(), [](TopoDS_Edge const & e) {
        return !BRep_Tool::Degenerated(e);
    }));
}

void addCounts(TopoDS_Shape const & part, Measures & measures)
{
    measures.parts += 1;
    measures.solids += countOf(part, TopAbs_SOLID);
    measures.shells += countOf(part, TopAbs_SHELL);
    measures.faces += countOf(part, TopAbs_FACE);
    measures.edges += realEdgesOf(part);
    measures.vertices += countOf(part, TopAbs_VERTEX);
}

/// Volume, centre and area of a part where it was drawn.
struct Mass
{
    double volume = 0;
    double area = 0;
    gp_Pnt centre;
};

Mass massOf(TopoDS_Shape const & part)
{
    // Integrated adaptively: without a bound for the error, two forms of one curve give two areas.
    // An open shell has no volume; what the kernel would take for one depends on where it stands.
    constexpr double Error = 1e-8;
    constexpr bool OnlyClosed = true;
    GProp_GProps volume;
    GProp_GProps area;
    BRepGProp::VolumeProperties(part, volume, Error, OnlyClosed);
    BRepGProp::SurfaceProperties(part, area, Error);
    return {volume.Mass(), area.Mass(), volume.CentreOfMass()};
}

/// Walks through all places of a document.
class Survey
{
public:
    explicit Survey(TDocStd_Document const & document)
    {
        TDF_LabelSequence tops;
        XCAFDoc_DocumentTool::ShapeTool(document.Main())->GetFreeShapes(tops);
        for (TDF_Label const & top : tops)
            visit(top, XCAFDoc_ShapeTool::GetLocation(top));
        for (int i = 0; i < 3; ++i)
            m_Measures.centre[i] =
                m_Measures.volume == 0 ? 0 : m_Moment.Coord(i + 1) / m_Measures.volume;
    }

    Measures const & measures() const { return m_Measures; }

private:
    void visit(TDF_Label const & product, TopLoc_Location const & where)
    {
        bool const isNew = !m_Masses.IsBound(product);
        if (!XCAFDoc_ShapeTool::IsAssembly(product)) {
            addPart(product, where);
            return;
        }
        TDF_LabelSequence places;
        XCAFDoc_ShapeTool::GetComponents(product, places);
        if (isNew) {
            m_Masses.Bind(product, {});
            m_Measures.assemblies += 1;
            m_Measures.instances += places.Length();
        }
        for (TDF_Label const & place : places) {
            TDF_Label referred;
            if (XCAFDoc_ShapeTool::GetReferredShape(place, referred))
                visit(referred, where * XCAFDoc_ShapeTool::GetLocation(place));
        }
    }

    void addPart(TDF_Label const & product, TopLoc_Location const & where)
    {
        if (!m_Masses.IsBound(product)) {
            TopoDS_Shape const shape = XCAFDoc_ShapeTool::GetShape(product);
            m_Masses.Bind(product, massOf(shape));
            addCounts(shape, m_Measures);
        }
        Mass const & mass = m_Masses.Find(product);
        m_Measures.volume += mass.volume;
        m_Measures.area += mass.area;
        m_Moment += mass.centre.Transformed(where.Transformation()).XYZ().Multiplied(mass.volume);
    }

    Measures m_Measures;
    gp_XYZ m_Moment;
    /// Assemblies are in it with nothing.
    NCollection_DataMap<TDF_Label, Mass, TDF_LabelMapHasher> m_Masses;
};

struct Row
{
    char const * name;
    int Measures::*count;
};

constexpr Row rows[] = {{"assemblies", &Measures::assemblies}, {"parts", &Measures::parts},
                        {"instances", &Measures::instances},   {"solids", &Measures::solids},
                        {"shells", &Measures::shells},         {"faces", &Measures::faces},
                        {"edges", &Measures::edges},           {"vertices", &Measures::vertices}};

bool agree(char const * name, char const * unit, double first, double second, double tolerance)
{
    bool const same = std::abs(first - second) <= tolerance;
    std::printf("%-12s %18.9g %18.9g %s%s\n", name, first, second, unit, same ? "" : "  differs");
    return same;
}

} // namespace

Measures measure(std::string const & path)
{
    STEPCAFControl_Reader reader;
    Handle(TDocStd_Document) document;
    XCAFApp_Application::GetApplication()->NewDocument("MDTV-XCAF", document);
    if (reader.ReadFile(path.c_str()) != IFSelect_RetDone || !reader.Transfer(document))
        throw BuildFailure("the kernel cannot read the file");
    Measures const measures = Survey(*document).measures();
    XCAFApp_Application::GetApplication()->Close(document);
    return measures;
}

void print(Measures const & measures)
{
    for (Row const & row : rows)
        std::printf("%-12s %18d\n", row.name, measures.*row.count);
    std::printf("%-12s %18.9g mm3\n", "volume", measures.volume);
    std::printf("%-12s %18.9g mm2\n", "area", measures.area);
    std::printf("%-12s %18.9g %18.9g %18.9g mm\n", "centre", measures.centre[0], measures.centre[1],
                measures.centre[2]);
}

bool compare(Measures const & first, Measures const & second)
{
    constexpr double Relative = 1e-6;
    constexpr double CentreTolerance = 1e-3;
    bool same = true;
    for (Row const & row : rows)
        same &= agree(row.name, "", first.*row.count, second.*row.count, 0);
    same &= agree("volume", "mm3", first.volume, second.volume, Relative * first.volume);
    same &= agree("area", "mm2", first.area, second.area, Relative * first.area);
    char const * const names[] = {"centre x", "centre y", "centre z"};
    for (int i = 0; i < 3; ++i)
        same &= agree(names[i], "mm", first.centre[i], second.centre[i], CentreTolerance);
    return same;
}

} // namespace vise
