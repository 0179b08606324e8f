#include "export/unwritten.h"

#include "export/listed.h"
#include "export/loose_entities.h"

#include <keld-transl/model/sub_pool.h>
#include <keld-transl/product/component.h>
#include <keld-transl/topology/body.h>
#include <keld-transl/topology/tri_strip.h>

#include <string>

namespace step {

using transl_tk::Base;
using transl_tk::Component;
using transl_tk::Hierarchy;
using transl_tk::HtmlLoggerEntry;

void countUnwritten(transl_tk::SubPool & model, LooseEntities const & loose,
                    std::set<Component *> const & reached, Coverage & coverage)
{
    auto const lose = [&](auto const & store, Kind kind, std::string const & reason) {
        store.m_Entities.forEach(
            [&](int id, Base *) { coverage.lost(kind, std::to_string(id), reason); });
    };
    lose(model.m_Annotations, HtmlLoggerEntry::PMIs, "dimensions and notes are not written");
    lose(model.m_SpotWelds, HtmlLoggerEntry::Welds, "spot welds have no place in STEP");
    lose(model.m_CartesianCoords, HtmlLoggerEntry::CoordinateSystem,
         "coordinate systems are not written");
    model.m_Hierarchies.m_Entities.forEach([&](int id, Base * entity) {
        auto * const node = static_cast<Hierarchy *>(entity);
        if (node->getHierarchyType() == Hierarchy::Instance ||
            reached.contains(static_cast<Component *>(node)))
            return;
        coverage.lost(node->getHierarchyType() == Hierarchy::Part ? HtmlLoggerEntry::Part
                                                                  : HtmlLoggerEntry::Assembly,
                      std::to_string(id), "it stands nowhere");
    });
    for (auto * const strip : loose.strips)
        coverage.lost(HtmlLoggerEntry::Facet, std::to_string(strip->getId()),
                      "facets are written to STL alone");
    model.m_Bodies.m_Entities.forEach([&](int id, Base * entity) {
        auto & body = static_cast<transl_tk::Body &>(*entity);
        if (listed(body, &transl_tk::Body::forEachShell).empty())
            coverage.lost(HtmlLoggerEntry::Body, std::to_string(id),
                          "it has no exact shape; facets are written to STL alone");
    });
}

} // namespace step
