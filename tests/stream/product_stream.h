#ifndef KELD_TESTS_STREAM_PRODUCT_STREAM_H
#define KELD_TESTS_STREAM_PRODUCT_STREAM_H

#include "stream/product_records.h"
#include "stream/topology_stream.h"

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
#include <pthread.h>

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

    /// Runs `body` in a thread with a stack of 512 KB.
    static void onSmallStack(std::function<void()> const & body)
    {
        pthread_attr_t attributes;
        pthread_attr_init(&attributes);
        pthread_attr_setstacksize(&attributes, std::size_t{512} * 1024);
        pthread_t thread;
        auto const run = [](void * call) -> void * {
            (*static_cast<std::function<void()> const *>(call))();
            return nullptr;
        };
        auto call = body;
        ASSERT_EQ(pthread_create(&thread, &attributes, run, &call), 0);
        pthread_join(thread, nullptr);
        pthread_attr_destroy(&attributes);
    }
};

} // namespace tests

#endif
