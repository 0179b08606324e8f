#include "view/colours.h"

#include <keld-transl/attributes/attribute.h>

#include <string_view>

namespace keld::view {

namespace {

constexpr int ColourType = 1;
constexpr int Components = 3;

using transl_tk::Attribute;
using Entities = std::vector<transl_tk::Base *>;

Entities entitiesOf(Attribute & attribute)
{
    Entities entities;
    attribute.forEachEntity(
        [](transl_tk::Base * entity, void * found) {
            static_cast<Entities *>(found)->push_back(entity);
            return true;
        },
        &entities);
    return entities;
}

} // namespace

SurfaceColours::SurfaceColours(transl_tk::SubPool const & model)
{
    for (Attribute * const attribute : model.m_Attributes) {
        std::string_view const name = attribute->getName();
        bool const isForSurfaces = name == "surface color";
        if (attribute->getType() != static_cast<Attribute::Type>(ColourType) ||
            attribute->getNumValues() < Components || !(isForSurfaces || name == "color"))
            continue;
        unsigned char bytes[4];
        attribute->getColor(bytes);
        Colour const colour = {bytes[0], bytes[1], bytes[2]};
        for (transl_tk::Base * const entity : entitiesOf(*attribute)) {
            if (isForSurfaces)
                m_Colours[entity] = colour;
            else
                m_Colours.emplace(entity, colour);
        }
    }
}

std::optional<Colour> SurfaceColours::of(transl_tk::Base const * entity) const
{
    auto const found = m_Colours.find(entity);
    return found == m_Colours.end() ? std::nullopt : std::optional(found->second);
}

} // namespace keld::view
