#include "export/part_entities.h"

#include "export/listed.h"

#include <keld-transl/product/part.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/edge.h>
#include <keld-transl/topology/face.h>
#include <keld-transl/topology/fin.h>
#include <keld-transl/topology/loop.h>
#include <keld-transl/topology/shell.h>

#include <unordered_set>

namespace step {

using transl_tk::Base;
using transl_tk::Part;

namespace {

class EntityList
{
public:
    void add(Base * entity)
    {
        if (entity != nullptr && m_Known.insert(entity).second)
            m_Entities.push_back(entity);
    }
    std::vector<Base *> take() { return std::move(m_Entities); }

private:
    std::vector<Base *> m_Entities;
    std::unordered_set<Base const *> m_Known;
};

void addEdges(transl_tk::Face & face, EntityList & list)
{
    for (auto * const loop : listed(face, &transl_tk::Face::forEachLoop)) {
        for (auto * const fin : listed(*loop, &transl_tk::Loop::forEachFin))
            list.add(fin->getEdge());
    }
}

} // namespace

std::vector<Base *> entitiesOf(Part & part, bool withEdges)
{
    EntityList list;
    for (auto * const edge : listed(part, &Part::forEachEdge))
        list.add(edge);
    for (auto * const body : listed(part, &Part::forEachBody)) {
        list.add(body);
        for (auto * const shell : listed(*body, &transl_tk::Body::forEachShell)) {
            for (auto * const face : listed(*shell, &transl_tk::Shell::forEachFace)) {
                list.add(face);
                if (withEdges)
                    addEdges(*face, list);
            }
        }
    }
    return list.take();
}

std::string nameOf(Base & entity, Part & part)
{
    if (entity.getEntityKind() == transl_tk::EntityKindFace)
        return static_cast<transl_tk::Face &>(entity).getLabel();
    if (entity.getEntityKind() != transl_tk::EntityKindBody)
        return {};
    // A body without a name of its own is called like its part.
    std::string const name = static_cast<transl_tk::Body &>(entity).getName();
    return name == part.getName() ? std::string() : name;
}

} // namespace step
