#ifndef KELD_TESTS_STREAM_PRODUCT_STREAM_H
#define KELD_TESTS_STREAM_PRODUCT_STREAM_H

#include "stream/product_records.h"
#include "stream/topology_stream.h"
#include "support/small_stack.h"

#include <keld-transl/attributes/annotation.h>
#include <keld-transl/attributes/attribute.h>
#include <keld-transl/attributes/branch.h>
#include <keld-transl/attributes/leaf.h>
#include <keld-transl/attributes/node_tree.h>
#include <keld-transl/attributes/parameter.h>
#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>

#include <functional>

namespace tests {

/// A model of product structure that is written to and read from segments.
class ProductStream : public TopologyStream
{
protected:
    template <class Kind> static Kind * hierarchy(int id)
    {
        return dynamic_cast<Kind *>(
            entity<transl_tk::Hierarchy>(&transl_tk::SubPool::m_Hierarchies, id));
    }
    static transl_tk::Part * part(int id) { return hierarchy<transl_tk::Part>(id); }
    static transl_tk::Assembly * assembly(int id) { return hierarchy<transl_tk::Assembly>(id); }
    static transl_tk::Instance * instance(int id) { return hierarchy<transl_tk::Instance>(id); }

    static std::vector<int> childIds(transl_tk::Assembly * assembly)
    {
        return idsOf(assembly, &transl_tk::Assembly::forEachChild);
    }

    static std::vector<transl_tk::Node *> nodesOf(transl_tk::Part * part)
    {
        return childrenOf(part->getNodeTree(), &transl_tk::NodeTree::forEachNode);
    }

    static transl_tk::Attribute & attribute(std::size_t index)
    {
        return *currentSubPool().m_Attributes.at(index);
    }

    template <class Holder> static std::vector<transl_tk::Base *> entitiesOf(Holder & holder)
    {
        std::vector<transl_tk::Base *> found;
        holder.forEachEntity(
            [](transl_tk::Base * entity, void * list) {
                static_cast<std::vector<transl_tk::Base *> *>(list)->push_back(entity);
                return true;
            },
            &found);
        return found;
    }

    static transl_tk::Annotation * makeAnnotation(int id)
    {
        double const zeros[3] = {};
        int const ints[3] = {};
        return transl_tk::Annotation::create(id, zeros, zeros, zeros, zeros, 0, nullptr, ints, ints,
                                             ints, ints, 0, 0, 0, 0, 0, "", "");
    }

    static transl_tk::TriStrip * makeStrip(int id)
    {
        float const vertices[6] = {1, 2, 3, 4, 5, 6};
        return transl_tk::TriStrip::create(id, vertices, nullptr, 2, nullptr, 0, nullptr, 0, false);
    }
};

} // namespace tests

#endif
