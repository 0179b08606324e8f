#ifndef KELD_TESTS_VIEW_MODELS_H
#define KELD_TESTS_VIEW_MODELS_H

#include "support/models.h"
#include "view/scene.h"

#include <keld-transl/attributes/attribute.h>
#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/tri_strip.h>

namespace tests {

using keld::view::Colour;
using keld::view::Scene;
using transl_tk::Assembly;
using transl_tk::Attribute;
using transl_tk::Body;
using transl_tk::Hierarchy;
using transl_tk::Instance;
using transl_tk::Part;
using transl_tk::TriStrip;

inline constexpr Colour Red = {255, 0, 0};
inline constexpr Colour Green = {0, 255, 0};
inline constexpr Colour Blue = {0, 0, 255};
inline constexpr Colour White = {255, 255, 255};

/// A list of triangles.
inline TriStrip * meshOf(std::vector<float> const & vertices, std::vector<int> const & indices,
                         std::vector<unsigned char> const & colours = {},
                         std::vector<float> const & normals = {})
{
    return TriStrip::create(0, vertices.data(), colours.empty() ? nullptr : colours.data(),
                            static_cast<int>(vertices.size() / 3),
                            normals.empty() ? nullptr : normals.data(),
                            static_cast<int>(normals.size() / 3), indices.data(),
                            static_cast<int>(indices.size()), false);
}

/// The corner of the unit cube in the plane of its first two axes.
inline TriStrip * aTriangle(std::vector<unsigned char> const & colours = {})
{
    return meshOf({0, 0, 0, 1, 0, 0, 0, 1, 0}, {0, 1, 2}, colours);
}

inline Body * aBody(TriStrip * facets)
{
    Body * const body = Body::create(0, "body");
    body->addTriStrip(facets);
    return body;
}

/// A part with a body of one triangle.
inline Part * aPart()
{
    Part * const part = Part::create(0, "part");
    part->addBody(aBody(aTriangle()));
    return part;
}

inline void move(Hierarchy * node, double x, double y, double z)
{
    double const transform[16] = {1, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, y, z, 1};
    node->setTransform(transform);
}

/// An instance of `component` in `assembly`.
inline Instance * place(transl_tk::Component * component, Assembly * assembly, double x = 0)
{
    Instance * const instance = Instance::create(0, component);
    move(instance, x, 0, 0);
    assembly->addChild(instance);
    return instance;
}

inline void paint(transl_tk::Base * entity, Colour const & colour, char const * name = "color",
                  int type = 1)
{
    auto * const attribute = Attribute::create(name, static_cast<Attribute::Type>(type));
    for (unsigned char const part : {colour.red, colour.green, colour.blue})
        attribute->addValue(part);
    attribute->addValue(static_cast<unsigned char>(100));
    attribute->addEntity(entity);
}

inline Scene gathered(keld::view::SceneLimits const & limits = {})
{
    return keld::view::gatherScene(currentSubPool(), limits);
}

} // namespace tests

#endif
