#include "process/kit_facets.h"

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
    } else if (name == "no-facets") {
        Body::create(0, "empty");
        mesh({0, 0, 0, 1, 0, 0}, {});
    }
}

} // namespace tests
