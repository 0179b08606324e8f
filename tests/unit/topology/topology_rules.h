#ifndef KELD_TESTS_UNIT_TOPOLOGY_TOPOLOGY_RULES_H
#define KELD_TESTS_UNIT_TOPOLOGY_TOPOLOGY_RULES_H

#include "support/models.h"

#include <keld-transl/model/original_id.h>

#include <cstddef>
#include <cstdint>
#include <gtest/gtest.h>
#include <type_traits>
#include <vector>

namespace tests {

/// Checks what holds for ids of every kind. `create(id)` makes an entity of the kind in `store`,
/// which is empty.
template <class Entity, class Create>
void expectRulesOfIds(transl_tk::EntityStore transl_tk::SubPool::*store, Create && create)
{
    transl_tk::EntityTable const & table = (currentSubPool().*store).m_Entities;
    Entity * const first = create(0);
    ASSERT_NE(first, nullptr);
    EXPECT_EQ(first->getId(), 1);
    EXPECT_EQ(table.lookup(1), first);
    Entity * const given = create(9);
    ASSERT_NE(given, nullptr);
    EXPECT_EQ(given->getId(), 9);
    Entity * const next = create(0);
    ASSERT_NE(next, nullptr);
    EXPECT_EQ(next->getId(), 10);
    Entity * const negative = create(-1);
    ASSERT_NE(negative, nullptr);
    EXPECT_EQ(negative->getId(), -1);

    EXPECT_EQ(create(9), nullptr);
    EXPECT_EQ(table.lookup(9), given);
    EXPECT_EQ(table.size(), 4U);

    Entity::destruct(given);
    EXPECT_EQ(table.lookup(9), nullptr);
    Entity::destruct(next);
    EXPECT_EQ(create(0)->getId(), 2);
    Entity::destruct(static_cast<Entity *>(table.lookup(2)));
    Entity::destruct(first);
    EXPECT_EQ(create(0)->getId(), 0);
    Entity::destruct(nullptr);
    EXPECT_EQ(table.size(), 2U);

    Entity * const last = create(2147483647);
    ASSERT_NE(last, nullptr);
    EXPECT_EQ(create(0), nullptr);
    EXPECT_EQ(table.size(), 3U);
}

/// Checks the foreign system's handle of an entity, which stands right behind its id.
template <class Entity> void expectOriginalId(Entity * entity)
{
    transl_tk::OriginalID * const handle = entity;
    EXPECT_EQ(handle->castToInt(), 0);
    handle->setOriginalEnt(0x123456789ABCDEFLL);
    EXPECT_EQ(entity->castToInt(), 0x123456789ABCDEFLL);
    EXPECT_EQ(reinterpret_cast<char *>(handle) - reinterpret_cast<char *>(entity),
              static_cast<std::ptrdiff_t>(sizeof(transl_tk::Base)));
}

template <class Entity>
inline constexpr bool HasOriginalId = std::is_base_of_v<transl_tk::OriginalID, Entity>;

/// What a walk of a list met, and how it goes: it stops behind `limit` calls.
template <class Child> struct Visits
{
    std::vector<Child *> met;
    std::size_t limit = ~std::size_t{0};

    static bool visit(Child * child, void * visits)
    {
        auto & self = *static_cast<Visits *>(visits);
        self.met.push_back(child);
        return self.met.size() < self.limit;
    }
};

/// Everything in a list, in order: `childrenOf(loop, &Loop::forEachFin)`.
template <class Parent, class Child>
std::vector<Child *> childrenOf(Parent * parent,
                                bool (Parent::*forEach)(bool (*)(Child *, void *), void *))
{
    Visits<Child> visits;
    EXPECT_TRUE((parent->*forEach)(Visits<Child>::visit, &visits));
    return visits.met;
}

/// Checks that a list, which is empty, keeps what is added as it is, and how its walk goes.
template <class Parent, class Child>
void expectList(Parent * parent, void (Parent::*add)(Child *),
                bool (Parent::*forEach)(bool (*)(Child *, void *), void *),
                std::vector<Child *> const & children)
{
    Visits<Child> none;
    EXPECT_TRUE((parent->*forEach)(Visits<Child>::visit, &none));
    EXPECT_TRUE(none.met.empty());

    for (Child * const child : children)
        (parent->*add)(child);
    EXPECT_EQ(childrenOf(parent, forEach), children);
    for (std::size_t limit = 1; limit <= children.size(); ++limit) {
        Visits<Child> some;
        some.limit = limit;
        EXPECT_FALSE((parent->*forEach)(Visits<Child>::visit, &some));
        EXPECT_EQ(some.met,
                  std::vector<Child *>(children.begin(),
                                       children.begin() + static_cast<std::ptrdiff_t>(limit)));
    }
}

/// Checks that a new entity stands where a destroyed one stood: the case that its test is about.
/// Under AddressSanitizer memory is not reused, and the test goes on without that.
template <class Entity> void expectPlace(Entity * entity, std::uintptr_t place)
{
#if defined(__SANITIZE_ADDRESS__)
    static_cast<void>(entity);
    static_cast<void>(place);
#else
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(entity), place);
#endif
}

} // namespace tests

#endif
