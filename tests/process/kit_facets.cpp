#include "process/kit_facets.h"

#include <keld-transl/attributes/attribute.h>
#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/tri_strip.h>

#include <limits>
#include <vector>

namespace tests {

namespace {

using transl_tk::Body;
using transl_tk::TriStrip;

constexpr float Nowhere = std::numeric_limits<float>::quiet_NaN();

TriStrip * mesh(std::vector<float> const & vertices, std::vector<int> const & indices)
{
    return TriStrip::create(0, vertices.data(), nullptr, static_cast<int>(vertices.size() / 3),
                            nullptr, 0, indices.data(), static_cast<int>(indices.size()), false);
}

void makeAllKinds()
{
    mesh({0, 0, 0, 0, 0, 1, 0, 1, 0}, {0, 1, 2});
    Body::create(0, "band")->addTriStrip(mesh(
        {0, 0, 0, 1, 0, 0, 0, 1, 0, 1, 1, 0, 1, 1, 0, 0, 0, 5, 0, 0, 5, 1, 0, 5, 0, 1, 5}, {}));
    Body * const list = Body::create(0, "a\nlist");
    list->addTriStrip(mesh({0, 0, 0, 4, 0, 0, 0, 3, 0, 8, 0, 0}, {0, 2, 1, 0, 1, 3}));
    Body::create(0, "empty");
}

void paint(transl_tk::Base * entity, std::vector<unsigned char> const & bytes)
{
    auto * const colour =
        transl_tk::Attribute::create("color", static_cast<transl_tk::Attribute::Type>(1));
    for (unsigned char const byte : bytes)
        colour->addValue(byte);
    colour->addEntity(entity);
}

transl_tk::Part * makePart(TriStrip * facets)
{
    auto * const part = transl_tk::Part::create(0, "part");
    Body * const body = Body::create(0, "body");
    body->addTriStrip(facets);
    part->addBody(body);
    return part;
}

transl_tk::Instance * place(transl_tk::Part * part, transl_tk::Assembly * assembly, double axis,
                            double x)
{
    auto * const instance = transl_tk::Instance::create(0, part);
    double const transform[16] = {axis, 0, 0, 0, 0, 1, 0, 0, 0, 0, 1, 0, x, 0, 0, 1};
    instance->setTransform(transform);
    assembly->addChild(instance);
    return instance;
}

void makePlaced()
{
    auto * const part = makePart(mesh({0, 0, 0, 1, 0, 0, 0, 0, 1}, {0, 1, 2}));
    auto * const top = transl_tk::Assembly::create(0, "top");
    place(part, top, 1, 0.5);
    paint(part, {255, 0, 0, 100});
    paint(place(part, top, -1, -0.5), {0, 0, 255, 100});
    float const vertices[] = {0, 0, 2, 1, 0, 2, 0, 0, 3};
    float const normals[] = {0, -1, 0, 0, -1, 0, 0, -1, 0};
    unsigned char const colours[] = {0, 255, 0, 0, 255, 0, 0, 255, 0};
    TriStrip::create(0, vertices, colours, 3, normals, 3, nullptr, 0, false);
}

void makeCrowded()
{
    std::vector<int> indices;
    for (int i = 0; i < 1000; ++i)
        indices.insert(indices.end(), {0, 1, 2});
    auto * const part = makePart(mesh({0, 0, 0, 1, 0, 0, 0, 0, 1}, indices));
    auto * const top = transl_tk::Assembly::create(0, "top");
    for (int i = 0; i < 2001; ++i)
        place(part, top, 1, i);
}

} // namespace

void makeFacets(std::string const & name)
{
    std::vector<float> const corner = {0, 0, 0, 1, 0, 0, 0, 1, 0};
    if (name == "facets") {
        makeAllKinds();
    } else if (name == "some-facets") {
        mesh({0, 0, 0, 1, 0, 0, 0, 1, 0, 0, Nowhere, 0}, {0, 1, 2, 0, 1, 4, 0, -1, 2, 0, 1, 3, 0});
    } else if (name == "many-facets") {
        std::vector<int> indices = {0, 1, 2};
        for (int i = 0; i < 20; ++i)
            indices.insert(indices.end(), {0, 1, 3});
        mesh(corner, indices);
    } else if (name == "bad-facets") {
        mesh({0, 0, 0, 1, 0, 0, 0, Nowhere, 0}, {0, 1, 2});
    } else if (name == "placed-facets") {
        makePlaced();
    } else if (name == "crowded-facets") {
        makeCrowded();
    } else if (name == "no-facets") {
        Body::create(0, "empty");
        mesh({0, 0, 0, 1, 0, 0}, {});
    }
}

} // namespace tests
