// Bytes as a model stream: the reader must take or refuse them. A refusal must leave the model as
// it was; what was taken must have a size and go again.

#include "exchange/model_exchange.h"
#include "exchange/stream_error.h"
#include "model/entity_kinds.h"

#include <keld-transl/attributes/attribute.h>
#include <keld-transl/geom/line.h>
#include <keld-transl/geom/plane.h>
#include <keld-transl/model/point3d.h>
#include <keld-transl/model/pool.h>
#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>
#include <keld-transl/topology/curve3d.h>
#include <keld-transl/topology/face.h>
#include <keld-transl/topology/surface.h>

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <set>
#include <string>
#include <utility>
#include <vector>

namespace {

using namespace transl_tk;

constexpr double Origin[3] = {0, 0, 0};
constexpr double First[3] = {1, 0, 0};
constexpr double Second[3] = {0, 1, 0};

/// Some of what a stream may refer to: carriers with and without users, things with an owner.
void fillModel()
{
    Point3D::create(1, 1, 2, 3);
    Curve3D::create(1, geom::Line::create(Origin, First, geom::Parameterization()));
    Surface * const surface =
        Surface::create(1, geom::Plane::create(Origin, First, Second, Origin,
                                               geom::Parameterization(), geom::Parameterization()));
    Face::create(1, surface);
    Assembly * const assembly = Assembly::create(1, "assembly");
    Part * const part = Part::create(2, "part");
    part->addPoint(Point3D::create(2, 4, 5, 6));
    assembly->addChild(Instance::create(3, part));
    Attribute::create("attribute", Attribute::Product)->addEntity(part);
}

struct Content
{
    std::vector<std::pair<int, Base *>> entities;
    std::vector<Attribute *> attributes;
    std::size_t reportEntries;
    std::set<std::string> names;
    std::vector<std::string> texts;
    std::vector<int> faces;

    bool operator==(Content const &) const = default;
};

Content contentOf(SubPool & model)
{
    Content content;
    for (int kind = EntityKindBody; kind <= EntityKindAnnotation; ++kind)
        (model.*storeOfKind(kind)).m_Entities.forEach([&](int id, Base * entity) {
            content.entities.emplace_back(id, entity);
        });
    content.attributes = model.m_Attributes;
    content.reportEntries = model.m_LoggerEntries.size();
    content.names.insert(model.m_Names.begin(), model.m_Names.end());
    content.texts = model.m_TextList;
    content.faces = model.m_FacesToSplit;
    return content;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    if (size == 0)
        return 0;
    static int runs = 0;
    Pool::construct("fuzz");
    Pool::getInstance()->inactiveLogger();
    SubPool & model = *Pool::getInstance()->currentSubPool();
    // Even runs meet a model that is there already.
    if (++runs % 2 == 0)
        fillModel();
    Content const before = contentOf(model);
    SharedMem segment("fuzz " + std::to_string(runs), static_cast<long long>(size), true);
    segment.map();
    std::memcpy(segment.m_Base, data, size);
    try {
        readModel(segment, model);
        if (streamSize(model) < 1)
            std::abort();
    } catch (StreamError const &) {
        if (contentOf(model) != before)
            std::abort();
    }
    segment.unmap();
    Pool::destruct();
    return 0;
}
