#include "import/label_facts.h"

#include <Quantity_ColorRGBA.hxx>
#include <TColStd_HSequenceOfExtendedString.hxx>
#include <TCollection_AsciiString.hxx>
#include <TCollection_HAsciiString.hxx>
#include <TDataStd_Name.hxx>
#include <TDataStd_TreeNode.hxx>
#include <XCAFDoc.hxx>
#include <XCAFDoc_Area.hxx>
#include <XCAFDoc_Centroid.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_LayerTool.hxx>
#include <XCAFDoc_MaterialTool.hxx>
#include <XCAFDoc_Volume.hxx>
#include <cmath>
#include <gp_Pnt.hxx>

namespace step {

namespace {

using transl_tk::HtmlLoggerEntry;

std::string utf8Of(TCollection_ExtendedString const & text)
{
    return TCollection_AsciiString(text).ToCString();
}

std::string textOf(Handle(TCollection_HAsciiString) const & text)
{
    return text.IsNull() ? std::string() : text->ToCString();
}

AttributeBook::Colour colourFrom(Quantity_ColorRGBA const & from)
{
    double red = 0;
    double green = 0;
    double blue = 0;
    from.GetRGB().Values(red, green, blue, Quantity_TOC_sRGB);
    auto const byte = [](double value) {
        return static_cast<unsigned char>(std::lround(255 * value));
    };
    auto const opacity =
        static_cast<unsigned char>(std::lround(100 * static_cast<double>(from.Alpha())));
    return {byte(red), byte(green), byte(blue), opacity};
}

void addColours(TDF_Label const & label, transl_tk::Base * entity, AttributeBook & attributes,
                Coverage & coverage)
{
    for (auto const & [name, colour] : coloursOf(label)) {
        attributes.add(entity, name, colour);
        coverage.exact(HtmlLoggerEntry::Attributes);
    }
}

void addLayers(TDF_Label const & label, transl_tk::Base * entity, AttributeBook & attributes,
               Coverage & coverage)
{
    auto const layers = XCAFDoc_DocumentTool::LayerTool(label)->GetLayers(label);
    if (layers.IsNull())
        return;
    for (int i = 1; i <= layers->Length(); ++i) {
        attributes.add(entity, LayerAttribute, "layer", utf8Of(layers->Value(i)));
        coverage.exact(HtmlLoggerEntry::Layers);
    }
}

void addMaterial(TDF_Label const & label, transl_tk::Base * entity, AttributeBook & attributes,
                 Coverage & coverage)
{
    Handle(TDataStd_TreeNode) node;
    if (!label.FindAttribute(XCAFDoc::MaterialRefGUID(), node) || !node->HasFather())
        return;
    Handle(TCollection_HAsciiString) name;
    Handle(TCollection_HAsciiString) description;
    Handle(TCollection_HAsciiString) densityName;
    Handle(TCollection_HAsciiString) densityType;
    double density = 0;
    if (!XCAFDoc_DocumentTool::MaterialTool(label)->GetMaterial(
            node->Father()->Label(), name, description, density, densityName, densityType))
        return;
    attributes.add(entity, MaterialAttribute, "material", textOf(name));
    if (!textOf(description).empty())
        attributes.add(entity, MaterialAttribute, "material description", textOf(description));
    if (density != 0)
        attributes.add(entity, MaterialAttribute, "density", std::vector<double>{density});
    coverage.exact(HtmlLoggerEntry::Attributes);
}

void addValidation(TDF_Label const & label, transl_tk::Base * entity, AttributeBook & attributes,
                   Coverage & coverage)
{
    auto const add = [&](char const * name, std::vector<double> const & numbers) {
        attributes.add(entity, ValidationAttribute, name, numbers);
        coverage.exact(HtmlLoggerEntry::Attributes);
    };
    double number = 0;
    gp_Pnt point;
    if (XCAFDoc_Area::Get(label, number))
        add("area", {number});
    if (XCAFDoc_Volume::Get(label, number))
        add("volume", {number});
    if (XCAFDoc_Centroid::Get(label, point))
        add("centroid", {point.X(), point.Y(), point.Z()});
}

} // namespace

std::string nameOf(TDF_Label const & label)
{
    Handle(TDataStd_Name) name;
    return label.FindAttribute(TDataStd_Name::GetID(), name) ? utf8Of(name->Get()) : std::string();
}

std::vector<NamedColour> coloursOf(TDF_Label const & label)
{
    constexpr struct
    {
        XCAFDoc_ColorType type;
        char const * name;
    } Types[] = {{XCAFDoc_ColorGen, "color"},
                 {XCAFDoc_ColorSurf, "surface color"},
                 {XCAFDoc_ColorCurv, "curve color"}};
    std::vector<NamedColour> result;
    for (auto const & [type, name] : Types) {
        TDF_Label colourLabel;
        Quantity_ColorRGBA colour;
        if (XCAFDoc_ColorTool::GetColor(label, type, colourLabel) &&
            XCAFDoc_DocumentTool::ColorTool(label)->GetColor(colourLabel, colour))
            result.emplace_back(name, colourFrom(colour));
    }
    return result;
}

void addFacts(TDF_Label const & label, transl_tk::Base * entity, AttributeBook & attributes,
              Coverage & coverage)
{
    addColours(label, entity, attributes, coverage);
    addLayers(label, entity, attributes, coverage);
    addMaterial(label, entity, attributes, coverage);
    addValidation(label, entity, attributes, coverage);
}

} // namespace step
