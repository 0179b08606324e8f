#ifndef KELD_TESTS_UNIT_PRODUCT_PRODUCT_FIXTURE_H
#define KELD_TESTS_UNIT_PRODUCT_PRODUCT_FIXTURE_H

#include "support/models.h"
#include "support/shapes.h"

#include <keld-transl/product/assembly.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/product/part.h>

#include <gtest/gtest.h>
#include <pthread.h>
#include <string>
#include <vector>

namespace tests {

using Nodes = std::vector<transl_tk::Hierarchy *>;

/// Appends to a `std::vector` of pointers: a callback for walks.
template <class Entity> bool append(Entity * entity, void * found)
{
    static_cast<std::vector<Entity *> *>(found)->push_back(entity);
    return true;
}

inline Nodes childrenOf(transl_tk::Assembly * assembly)
{
    Nodes found;
    assembly->forEachChild(append<transl_tk::Hierarchy>, &found);
    return found;
}

inline std::vector<transl_tk::Instance *> instancesOf(transl_tk::Component * component)
{
    std::vector<transl_tk::Instance *> found;
    component->forEachInstance(append<transl_tk::Instance>, &found);
    return found;
}

inline transl_tk::EntityTable const & hierarchies()
{
    return currentSubPool().m_Hierarchies.m_Entities;
}

inline bool stands(transl_tk::Hierarchy const * node, int id)
{
    return hierarchies().lookup(id) == node;
}

/// A chain of assemblies, each the child of the one before. Returns the topmost.
inline transl_tk::Assembly * aChain(int depth)
{
    // Names that clash take the longer the more there are.
    transl_tk::Assembly * const top = transl_tk::Assembly::create(0, "0");
    transl_tk::Assembly * last = top;
    for (int level = 1; level < depth; ++level) {
        transl_tk::Assembly * const next =
            transl_tk::Assembly::create(0, std::to_string(level).c_str());
        last->addChild(next);
        last = next;
    }
    return top;
}

/// Runs `body` in a thread with a stack of 512 KB.
template <class Body> void onASmallStack(Body body)
{
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    ASSERT_EQ(pthread_attr_setstacksize(&attributes, 512 * 1024), 0);
    pthread_t thread{};
    ASSERT_EQ(pthread_create(
                  &thread, &attributes,
                  [](void * run) -> void * {
                      (*static_cast<Body *>(run))();
                      return nullptr;
                  },
                  &body),
              0);
    pthread_join(thread, nullptr);
    pthread_attr_destroy(&attributes);
}

inline constexpr int VeryDeep = 100000;

class ProductTest : public testing::Test
{
protected:
    Ends m_Ends; ///< of the shapes that a test makes
    ScopedPool m_Pool;
};

} // namespace tests

#endif
