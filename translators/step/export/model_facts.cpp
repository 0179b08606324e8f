#include "export/model_facts.h"

#include "attribute_book.h"

#include <keld-transl/attributes/attribute.h>
#include <keld-transl/attributes/value.h>
#include <keld-transl/model/base.h>
#include <keld-transl/model/sub_pool.h>

#include <Quantity_ColorRGBA.hxx>
#include <TCollection_ExtendedString.hxx>
#include <TCollection_HAsciiString.hxx>
#include <XCAFDoc_Area.hxx>
#include <XCAFDoc_Centroid.hxx>
#include <XCAFDoc_ColorTool.hxx>
#include <XCAFDoc_DocumentTool.hxx>
#include <XCAFDoc_LayerTool.hxx>
#include <XCAFDoc_MaterialTool.hxx>
#include <XCAFDoc_Volume.hxx>
#include <algorithm>
#include <gp_Pnt.hxx>
#include <optional>
#include <set>

namespace step {

namespace {

using transl_tk::Attribute;
using transl_tk::HtmlLoggerEntry;
using transl_tk::IValue;

enum ValueType : int {
    TextValue = 1,
    IntValue = 2,
    FloatValue = 4,
    DoubleValue = 5,
    ByteValue = 6
};

std::string textOf(Attribute const & attribute)
{
    IValue * const value = attribute.getNumValues() > 0 ? attribute.getValue(0) : nullptr;
    if (value == nullptr || value->getType() != TextValue)
        return {};
    char * text = nullptr;
    value->getValue(text);
    return text;
}

std::vector<double> numbersOf(Attribute const & attribute)
{
    std::vector<double> result;
    for (int i = 0; i < attribute.getNumValues(); ++i) {
        IValue * const value = attribute.getValue(i);
        if (value == nullptr || value->getType() != DoubleValue)
            return {};
        value->getValue(result.emplace_back());
    }
    return result;
}

bool isFact(Attribute const & attribute)
{
    int const type = attribute.getType();
    return type == ColourAttribute || type == LayerAttribute || type == MaterialAttribute ||
           type == ValidationAttribute;
}

bool hasColour(Attribute const & attribute)
{
    return attribute.getNumValues() > 2 && attribute.getValue(0) != nullptr &&
           attribute.getValue(0)->getType() == ByteValue;
}

Quantity_ColorRGBA colourOf(Attribute & attribute)
{
    unsigned char values[4];
    attribute.getColor(values);
    Quantity_Color const rgb(values[0] / 255.0, values[1] / 255.0, values[2] / 255.0,
                             Quantity_TOC_sRGB);
    return {rgb, std::min<float>(values[3], 100) / 100};
}

XCAFDoc_ColorType colourTypeOf(std::string const & name)
{
    if (name == "surface color")
        return XCAFDoc_ColorSurf;
    return name == "curve color" ? XCAFDoc_ColorCurv : XCAFDoc_ColorGen;
}

/// What the attributes of the type of materials say together.
struct Material
{
    std::string name;
    std::string description;
    double density = 0;
};

void add(Material & material, Attribute const & attribute)
{
    std::string const name = attribute.getName();
    if (name == "material")
        material.name = textOf(attribute);
    else if (name == "material description")
        material.description = textOf(attribute);
    else if (auto const numbers = numbersOf(attribute); !numbers.empty())
        material.density = numbers.front();
}

Handle(TCollection_HAsciiString) ascii(std::string const & text)
{
    return new TCollection_HAsciiString(text.c_str());
}

void putMaterial(Material const & material, TDF_Label const & label)
{
    XCAFDoc_DocumentTool::MaterialTool(label)->SetMaterial(
        label, ascii(material.name), ascii(material.description), material.density,
        ascii("density measure"), ascii("POSITIVE_RATIO_MEASURE"));
}

} // namespace

ModelFacts::ModelFacts(transl_tk::SubPool & model, double unit)
    : m_Unit(unit), m_All(model.m_Attributes.begin(), model.m_Attributes.end())
{
    for (Attribute * const attribute : m_All) {
        std::pair<ModelFacts *, Attribute *> context(this, attribute);
        attribute->forEachEntity(
            [](transl_tk::Base * entity, void * user) {
                auto & [facts, hung] = *static_cast<std::pair<ModelFacts *, Attribute *> *>(user);
                facts->m_ByEntity[entity].push_back(hung);
                if (isFact(*hung) && entity->getEntityKind() == transl_tk::EntityKindEdge)
                    facts->m_HasFactsOfEdges = true;
                return true;
            },
            &context);
    }
}

bool ModelFacts::hasFacts(transl_tk::Base const & entity) const
{
    Attributes const & all = of(entity);
    return std::any_of(all.begin(), all.end(),
                       [](Attribute const * attribute) { return isFact(*attribute); });
}

/// The kernel writes the numbers as they are: areas and volumes with millimetres as their unit,
/// points without one, that is in the unit of the file.
bool ModelFacts::putProperty(Attribute const & attribute, TDF_Label const & label) const
{
    std::string const name = attribute.getName();
    auto const numbers = numbersOf(attribute);
    if (name == "area" && numbers.size() == 1)
        XCAFDoc_Area::Set(label, numbers[0]);
    else if (name == "volume" && numbers.size() == 1)
        XCAFDoc_Volume::Set(label, numbers[0]);
    else if (name == "centroid" && numbers.size() == 3)
        XCAFDoc_Centroid::Set(label,
                              {numbers[0] / m_Unit, numbers[1] / m_Unit, numbers[2] / m_Unit});
    else
        return false;
    return true;
}

void ModelFacts::put(transl_tk::Base const & entity, TDF_Label const & label, Coverage & coverage)
{
    m_Put.insert(&entity);
    std::optional<Material> material;
    for (Attribute * const attribute : of(entity)) {
        switch (static_cast<int>(attribute->getType())) {
        case ColourAttribute:
            if (hasColour(*attribute)) {
                XCAFDoc_ColorType const type = colourTypeOf(attribute->getName());
                XCAFDoc_DocumentTool::ColorTool(label)->SetColor(label, colourOf(*attribute), type);
                if (type == XCAFDoc_ColorGen)
                    coverage.changed(HtmlLoggerEntry::Attributes,
                                     "colour as one of surfaces and one of curves");
                else
                    coverage.exact(HtmlLoggerEntry::Attributes);
            }
            break;
        case LayerAttribute:
            XCAFDoc_DocumentTool::LayerTool(label)->SetLayer(
                label, TCollection_ExtendedString(textOf(*attribute).c_str(), true));
            coverage.exact(HtmlLoggerEntry::Layers);
            break;
        case MaterialAttribute:
            add(material ? *material : material.emplace(), *attribute);
            break;
        case ValidationAttribute:
            if (putProperty(*attribute, label))
                coverage.exact(HtmlLoggerEntry::Attributes);
            break;
        default:
            break;
        }
    }
    if (material) {
        putMaterial(*material, label);
        coverage.exact(HtmlLoggerEntry::Attributes);
    }
}

std::string ModelFacts::text(transl_tk::Base const & entity, int number,
                             std::string const & name) const
{
    for (Attribute const * const attribute : of(entity)) {
        if (attribute->getType() == number && attribute->getName() == name)
            return textOf(*attribute);
    }
    return {};
}

std::vector<std::pair<std::string, std::string>> ModelFacts::texts(int number) const
{
    std::vector<std::pair<std::string, std::string>> result;
    for (Attribute const * const attribute : m_All) {
        if (attribute->getType() == number)
            result.emplace_back(attribute->getName(), textOf(*attribute));
    }
    return result;
}

void ModelFacts::countLost(Coverage & coverage) const
{
    // Those of dimensions and tolerances go with their annotations.
    static std::set<int> const Known = {
        ColourAttribute,       Attribute::Product,          LayerAttribute,
        MaterialAttribute,     ValidationAttribute,         HeaderAttribute,
        ToleranceAttribute,    InstanceNameAttribute,       UnitAttribute,
        DimensionAttribute,    GeometricToleranceAttribute, DatumAttribute,
        Attribute::Dictionary,
    };
    for (Attribute * const attribute : m_All) {
        if (isFact(*attribute))
            countMissed(*attribute, coverage);
        std::string const name = attribute->getName();
        int const type = attribute->getType();
        if (type == ToleranceAttribute)
            coverage.changed(HtmlLoggerEntry::Attributes,
                             "tolerance of its own as one tolerance for the whole shape");
        else if (!Known.contains(type))
            coverage.lost(HtmlLoggerEntry::Attributes, '"' + name + '"',
                          "attributes of the type " + std::to_string(type) +
                              " have no place in STEP");
    }
}

void ModelFacts::countMissed(Attribute & attribute, Coverage & coverage) const
{
    std::pair<ModelFacts const *, long long> context(this, 0);
    attribute.forEachEntity(
        [](transl_tk::Base * entity, void * user) {
            auto & [facts, missed] = *static_cast<std::pair<ModelFacts const *, long long> *>(user);
            missed += facts->m_Put.contains(entity) ? 0 : 1;
            return true;
        },
        &context);
    for (long long i = 0; i < context.second; ++i)
        coverage.lost(HtmlLoggerEntry::Attributes, '"' + std::string(attribute.getName()) + '"',
                      "it hangs on what STEP has no place for it at");
}

ModelFacts::Attributes const & ModelFacts::of(transl_tk::Base const & entity) const
{
    static Attributes const None;
    auto const found = m_ByEntity.find(&entity);
    return found == m_ByEntity.end() ? None : found->second;
}

} // namespace step
