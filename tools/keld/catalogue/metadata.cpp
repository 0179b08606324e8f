#include "catalogue/metadata.h"

#include <keld-transl/metadata/database_dictionary.h>

#include <algorithm>
#include <charconv>

namespace keld {

using transl_tk::Attribute;

namespace {

constexpr struct
{
    int key;
    char const * name;
} Names[] = {
    {transl_tk::Assemblies, "assemblies"},
    {transl_tk::Parts, "parts"},
    {transl_tk::Instances, "instances"},
    {transl_tk::AssemblyInstances, "instances of assemblies"},
    {transl_tk::PartInstances, "instances of parts"},
    {transl_tk::Faces, "faces"},
    {transl_tk::Triangles, "triangles"},
    {transl_tk::SurfacePlane, "planes"},
    {transl_tk::SurfaceCylinder, "cylinders"},
    {transl_tk::SurfaceCone, "cones"},
    {transl_tk::SurfaceSphere, "spheres"},
    {transl_tk::SurfaceTorus, "tori"},
    {transl_tk::SurfaceBSpline, "B-spline surfaces"},
    {transl_tk::SurfaceRevolution, "surfaces of revolution"},
    {transl_tk::SurfaceExtrusion, "surfaces of linear extrusion"},
    {transl_tk::SurfaceRuled, "ruled surfaces"},
    {transl_tk::SurfaceOffset, "offset surfaces"},
    {transl_tk::SurfaceType1, "surfaces of type 1"},
    {transl_tk::SurfaceType6, "surfaces of type 6"},
    {transl_tk::CurveLine, "lines"},
    {transl_tk::CurveCircle, "circles"},
    {transl_tk::CurveEllipse, "ellipses"},
    {transl_tk::CurveBSpline, "B-spline curves"},
    {transl_tk::CurveLineStrip, "line strips"},
    {transl_tk::CurveComposite, "composite curves"},
    {transl_tk::CurveType4, "curves of type 4"},
    {transl_tk::SpotWelds, "spot welds"},
    {transl_tk::Annotations, "annotations"},
    {transl_tk::HoleFeatures, "hole features"},
    {transl_tk::BlendFeatures, "blend features"},
    {transl_tk::AttributesGeneral, "general attributes"},
    {transl_tk::AttributesType5, "attributes of type 5"},
    {transl_tk::AttributesType7, "attributes of type 7"},
    {transl_tk::AttributesType10, "attributes of type 10"},
    {transl_tk::AttributesType11, "attributes of type 11"},
    {transl_tk::AttributesType12, "attributes of type 12"},
};

constexpr std::string_view KeyPrefix = "key ";

char const * nameOf(int key)
{
    for (auto const & known : Names)
        if (known.key == key)
            return known.name;
    return nullptr;
}

std::string comparable(std::string_view name)
{
    std::string result(name);
    for (char & c : result) {
        if (c == '-' || c == '_')
            c = ' ';
        else if (c >= 'A' && c <= 'Z')
            c = static_cast<char>(c - 'A' + 'a');
    }
    return result;
}

/// Goes through the values of an attribute whose layout is known to be that of a dictionary.
class Values
{
public:
    explicit Values(Attribute const & attribute) : m_Attribute(attribute) {}

    int number()
    {
        int value = 0;
        m_Attribute.getValue(m_Index++)->getValue(value);
        return value;
    }

    std::string text()
    {
        char * value = nullptr;
        m_Attribute.getValue(m_Index++)->getValue(value);
        return value;
    }

private:
    Attribute const & m_Attribute;
    int m_Index = 0;
};

} // namespace

std::optional<Metadata> readMetadata(Attribute * attribute)
{
    if (!transl_tk::DataBaseDictionary::isDictionary(attribute))
        return std::nullopt;
    Metadata metadata;
    Values values(*attribute);
    for (int pairs = values.number() / 2; pairs > 0; --pairs) {
        int const key = values.number();
        metadata.counters.emplace(key, values.number());
    }
    for (int pairs = values.number() / 2; pairs > 0; --pairs) {
        std::string const name = values.text();
        metadata.features.emplace(name, values.number());
    }
    metadata.text = values.text();
    return metadata;
}

std::string counterName(int key)
{
    char const * const name = nameOf(key);
    return name != nullptr ? name : std::string(KeyPrefix) + std::to_string(key);
}

std::optional<int> counterKey(std::string_view name)
{
    std::string const wanted = comparable(name);
    for (auto const & known : Names)
        if (comparable(known.name) == wanted)
            return known.key;
    if (!wanted.starts_with(KeyPrefix))
        return std::nullopt;
    // The name may hold a minus, which the comparable one does not.
    std::string_view const digits = name.substr(KeyPrefix.size());
    int key = 0;
    auto const end = std::from_chars(digits.data(), digits.data() + digits.size(), key);
    bool const isNumber = end.ec == std::errc() && end.ptr == digits.data() + digits.size();
    return isNumber ? std::optional(key) : std::nullopt;
}

std::vector<std::pair<std::string, int>> namedCounters(Metadata const & metadata)
{
    std::vector<std::pair<std::string, int>> result;
    for (auto const & [key, name] : Names)
        if (auto const found = metadata.counters.find(key); found != metadata.counters.end())
            result.emplace_back(name, found->second);
    for (auto const & [key, number] : metadata.counters)
        if (nameOf(key) == nullptr)
            result.emplace_back(counterName(key), number);
    return result;
}

} // namespace keld
