#include "palette.h"

#include <BRepGProp.hxx>
#include <GProp_GProps.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TDataStd_Name.hxx>
#include <XCAFDoc_Area.hxx>
#include <XCAFDoc_Centroid.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_Volume.hxx>

namespace vise {

namespace {

/// Names are UTF-8.
void setName(TDF_Label const & label, std::string const & name)
{
    TDataStd_Name::Set(label, TCollection_ExtendedString(name.c_str(), true));
}

struct MaterialData
{
    char const * name;
    char const * description;
    double density; ///< in grams per cubic centimetre
};

MaterialData dataOf(Material material)
{
    switch (material) {
    case Material::CastIron:
        return {"EN-GJL-250", "grey cast iron", 7.2};
    case Material::Steel:
        return {"C45", "quenched and tempered steel", 7.85};
    case Material::Brass:
        return {"CuZn39Pb3", "brass", 8.47};
    case Material::Rubber:
        return {"NBR 70", "nitrile rubber", 1.3};
    }
    throw BuildFailure("there is no such material");
}

} // namespace

Palette::Palette(TDocStd_Document const & document)
    : m_Shapes(XCAFDoc_DocumentTool::ShapeTool(document.Main())),
      m_Colours(XCAFDoc_DocumentTool::ColorTool(document.Main())),
      m_Layers(XCAFDoc_DocumentTool::LayerTool(document.Main())),
      m_Materials(XCAFDoc_DocumentTool::MaterialTool(document.Main()))
{}

TDF_Label Palette::part(TopoDS_Shape const & shape, std::string const & name, char const * layer)
{
    TDF_Label const label = m_Shapes->AddShape(shape, false);
    setName(label, name);
    m_Layers->SetLayer(label, TCollection_ExtendedString(layer));
    return label;
}

TDF_Label Palette::assembly(std::string const & name)
{
    TDF_Label const label = m_Shapes->NewShape();
    setName(label, name);
    return label;
}

TDF_Label Palette::place(TDF_Label const & assembly, TDF_Label const & what,
                         std::string const & name, gp_Trsf const & where)
{
    TDF_Label const label = m_Shapes->AddComponent(assembly, what, TopLoc_Location(where));
    setName(label, name);
    return label;
}

void Palette::paint(TDF_Label const & what, Quantity_Color const & colour)
{
    m_Colours->SetColor(what, colour, XCAFDoc_ColorSurf);
}

void Palette::paint(TDF_Label const & part, TopoDS_Face const & face, Quantity_Color const & colour)
{
    paint(m_Shapes->AddSubShape(part, face), colour);
}

void Palette::setMaterial(TDF_Label const & part, Material material)
{
    auto const text = [](char const * value) { return new TCollection_HAsciiString(value); };
    MaterialData const data = dataOf(material);
    m_Materials->SetMaterial(part, text(data.name), text(data.description), data.density,
                             text("density"), text("POSITIVE_RATIO_MEASURE"));
}

void Palette::addProperties(TDF_Label const & part, TopoDS_Shape const & shape)
{
    constexpr double Error = 1e-8;
    GProp_GProps volume;
    GProp_GProps area;
    BRepGProp::VolumeProperties(shape, volume, Error);
    BRepGProp::SurfaceProperties(shape, area, Error);
    XCAFDoc_Volume::Set(part, volume.Mass());
    XCAFDoc_Area::Set(part, area.Mass());
    XCAFDoc_Centroid::Set(part, volume.CentreOfMass());
}

void Palette::finish()
{
    m_Shapes->UpdateAssemblies();
}

} // namespace vise
