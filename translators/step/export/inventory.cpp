#include "export/inventory.h"

#include "import/label_facts.h"

#include <BRepAdaptor_Curve.hxx>
#include <BRepBndLib.hxx>
#include <BRepGProp.hxx>
#include <BRep_Tool.hxx>
#include <GProp_GProps.hxx>
#include <Precision.hxx>
#include <Quantity_ColorRGBA.hxx>
#include <TColStd_HSequenceOfExtendedString.hxx>
#include <TCollection_AsciiString.hxx>
#include <TDF_LabelSequence.hxx>
#include <TopExp.hxx>
#include <TopExp_Explorer.hxx>
#include <TopLoc_Location.hxx>
#include <TopTools_IndexedMapOfShape.hxx>
#include <TopoDS.hxx>
#include <TopoDS_Edge.hxx>
#include <TopoDS_Vertex.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_LayerTool.hxx>
#include <XCAFDoc_MaterialTool.hxx>
#include <XCAFDoc_ShapeTool.hxx>
#include <algorithm>
#include <cmath>
#include <tuple>

namespace step {

namespace {

long long countOf(TopoDS_Shape const & shape, TopAbs_ShapeEnum kind)
{
    TopTools_IndexedMapOfShape found;
    TopExp::MapShapes(shape, kind, found);
    return found.Extent();
}

long long countOfEdges(TopoDS_Shape const & shape)
{
    TopTools_IndexedMapOfShape found;
    TopExp::MapShapes(shape, TopAbs_EDGE, found);
    return std::count_if(found.cbegin(), found.cend(), [](TopoDS_Shape const & edge) {
        return !BRep_Tool::Degenerated(TopoDS::Edge(edge));
    });
}

long long countOfPoints(TopoDS_Shape const & shape)
{
    long long count = 0;
    for (TopExp_Explorer point(shape, TopAbs_VERTEX, TopAbs_EDGE); point.More(); point.Next())
        ++count;
    return count;
}

/// Extends a box by points of all edges, and by all vertices. The box of the surfaces takes as long
/// as reading a file.
void addEdges(TopoDS_Shape const & shape, Bnd_Box & box)
{
    constexpr int Steps = 16;
    TopTools_IndexedMapOfShape found;
    TopExp::MapShapes(shape, TopAbs_EDGE, found);
    for (auto edge = found.cbegin(); edge != found.cend(); ++edge) {
        if (!BRep_Tool::IsGeometric(TopoDS::Edge(*edge)) ||
            BRep_Tool::Degenerated(TopoDS::Edge(*edge)))
            continue;
        BRepAdaptor_Curve const curve(TopoDS::Edge(*edge));
        double const first = curve.FirstParameter();
        double const last = curve.LastParameter();
        if (Precision::IsInfinite(first) || Precision::IsInfinite(last))
            continue;
        for (int i = 0; i <= Steps; ++i)
            box.Add(curve.Value(first + (last - first) * i / Steps));
    }
    found.Clear();
    TopExp::MapShapes(shape, TopAbs_VERTEX, found);
    for (auto vertex = found.cbegin(); vertex != found.cend(); ++vertex)
        box.Add(BRep_Tool::Pnt(TopoDS::Vertex(*vertex)));
}

PartInventory partInventory(TDF_Label const & label)
{
    PartInventory part;
    part.label = label;
    part.name = nameOf(label);
    part.shape = XCAFDoc_ShapeTool::GetShape(label);
    part.solids = countOf(part.shape, TopAbs_SOLID);
    part.shells = countOf(part.shape, TopAbs_SHELL);
    part.faces = countOf(part.shape, TopAbs_FACE);
    part.edges = countOfEdges(part.shape);
    part.points = countOfPoints(part.shape);
    part.measures = measuresOf(part.shape, false);
    return part;
}

void add(Measures & whole, Measures const & part, gp_Trsf const & place)
{
    whole.volume += part.volume;
    whole.area += part.area;
    if (part.area > 0) {
        gp_Pnt centre(part.moment / part.area);
        whole.moment += centre.Transformed(place).XYZ() * part.area;
    }
    if (!part.box.IsVoid())
        whole.box.Add(part.box.Transformed(place));
}

using Parts = NCollection_DataMap<TDF_Label, Measures, TDF_LabelMapHasher>;

/// What a product measures with all that stands below it.
Measures const & wholeOf(TDF_Label const & definition, Parts & known)
{
    if (auto const * measures = known.Seek(definition))
        return *measures;
    Measures whole;
    TDF_LabelSequence places;
    XCAFDoc_ShapeTool::GetComponents(definition, places);
    for (TDF_Label const & place : places) {
        TDF_Label referred;
        if (XCAFDoc_ShapeTool::GetReferredShape(place, referred))
            add(whole, wholeOf(referred, known),
                XCAFDoc_ShapeTool::GetLocation(place).Transformation());
    }
    return *known.Bound(definition, whole);
}

std::string wordsOf(Quantity_ColorRGBA const & colour)
{
    double red = 0;
    double green = 0;
    double blue = 0;
    colour.GetRGB().Values(red, green, blue, Quantity_TOC_sRGB);
    std::string words;
    for (double const value : {red, green, blue, static_cast<double>(colour.Alpha())})
        words += std::to_string(std::lround(255 * value)) + " ";
    return words;
}

std::vector<std::string> coloursOf(TDF_Label const & label)
{
    std::vector<std::string> result;
    for (auto const type : {XCAFDoc_ColorGen, XCAFDoc_ColorSurf, XCAFDoc_ColorCurv}) {
        TDF_Label colourLabel;
        Quantity_ColorRGBA colour;
        if (XCAFDoc_ColorTool::GetColor(label, type, colourLabel) &&
            XCAFDoc_DocumentTool::ColorTool(label)->GetColor(colourLabel, colour))
            result.push_back(wordsOf(colour));
    }
    return result;
}

std::vector<std::string> layersOf(TDF_Label const & label)
{
    std::vector<std::string> result;
    auto const layers = XCAFDoc_DocumentTool::LayerTool(label)->GetLayers(label);
    for (int i = 1; !layers.IsNull() && i <= layers->Length(); ++i)
        result.push_back(TCollection_AsciiString(layers->Value(i)).ToCString());
    return result;
}

void gatherFacts(TDF_Label const & product, Inventory & inventory)
{
    TDF_LabelSequence labels;
    XCAFDoc_ShapeTool::GetSubShapes(product, labels);
    labels.Append(product);
    for (TDF_Label const & label : labels) {
        for (std::string const & colour : coloursOf(label))
            inventory.colours.insert(colour);
        for (std::string const & layer : layersOf(label))
            inventory.layers.insert(layer);
    }
}

void gatherPlaces(TDF_Label const & product, Inventory & inventory)
{
    TDF_LabelSequence places;
    XCAFDoc_ShapeTool::GetComponents(product, places);
    for (TDF_Label const & place : places) {
        std::string const name = nameOf(place);
        ++inventory.instances;
        if (!name.empty())
            inventory.instanceNames.insert(name);
        TDF_Label referred;
        XCAFDoc_ShapeTool::GetReferredShape(place, referred);
        std::string const of = "of an instance of \"" + nameOf(referred) + '"';
        std::set<std::string> facts;
        for (std::string const & colour : coloursOf(place))
            facts.insert(std::string("colour ").append(colour).append(of));
        for (std::string const & layer : layersOf(place))
            facts.insert(std::string("layer \"").append(layer).append("\" ").append(of));
        inventory.instanceFacts.insert(facts.begin(), facts.end());
    }
}

} // namespace

Measures measuresOf(TopoDS_Shape const & shape, bool exact)
{
    constexpr double Error = 1e-8;
    Measures result;
    GProp_GProps area;
    if (exact)
        BRepGProp::SurfaceProperties(shape, area, Error);
    else
        BRepGProp::SurfaceProperties(shape, area);
    result.area = area.Mass();
    result.moment = area.CentreOfMass().XYZ() * area.Mass();
    for (TopExp_Explorer solid(shape, TopAbs_SOLID); solid.More(); solid.Next()) {
        GProp_GProps volume;
        if (exact)
            BRepGProp::VolumeProperties(solid.Current(), volume, Error);
        else
            BRepGProp::VolumeProperties(solid.Current(), volume);
        result.volume += volume.Mass();
    }
    if (exact)
        BRepBndLib::AddOptimal(shape, result.box, false, false);
    else
        addEdges(shape, result.box);
    return result;
}

Measures wholeOf(Inventory const & inventory)
{
    Parts measures;
    for (PartInventory const & part : inventory.parts)
        measures.Bind(part.label, part.measures);
    Measures whole;
    TDF_LabelSequence tops;
    XCAFDoc_DocumentTool::ShapeTool(inventory.document->Main())->GetFreeShapes(tops);
    for (TDF_Label const & top : tops)
        add(whole, wholeOf(top, measures), gp_Trsf());
    return whole;
}

Inventory inventoryOf(Handle(TDocStd_Document) const & document)
{
    Inventory result;
    result.document = document;
    TDF_LabelSequence labels;
    auto const shapes = XCAFDoc_DocumentTool::ShapeTool(document->Main());
    shapes->GetShapes(labels);
    for (TDF_Label const & label : labels) {
        result.products.insert(nameOf(label));
        gatherPlaces(label, result);
        gatherFacts(label, result);
        if (XCAFDoc_ShapeTool::IsAssembly(label))
            continue;
        result.parts.push_back(partInventory(label));
    }
    std::sort(result.parts.begin(), result.parts.end(),
              [](PartInventory const & a, PartInventory const & b) {
                  return std::tie(a.name, a.measures.volume) < std::tie(b.name, b.measures.volume);
              });
    XCAFDoc_DocumentTool::MaterialTool(document->Main())->GetMaterialLabels(labels);
    for (TDF_Label const & label : labels)
        result.materials.insert(nameOf(label));
    return result;
}

} // namespace step
