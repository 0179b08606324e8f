#ifndef KELD_TRANSL_MODEL_ENTITY_H
#define KELD_TRANSL_MODEL_ENTITY_H

#include "model/block_pool.h"
#include "model/id_tree.h"

#include <keld-transl/model/base.h>
#include <keld-transl/model/pool.h>

#include <climits>
#include <utility>

namespace transl_tk {

/// The sub-pool that all entities work on, null when there is none.
class CurrentSubPool
{
public:
    static SubPool * get() noexcept
    {
        Pool const * const pool = Pool::m_Pool;
        return pool != nullptr ? pool->m_CurrentSubPool : nullptr;
    }

    /// Takes a dead entity out of whatever sub-pool but the current one still lists it.
    static void leaveOthers(EntityStore SubPool::*store, int id, Base const * entity) noexcept;
    /// The same for an attribute.
    static void leaveOthers(Attribute const * attribute) noexcept;

    /// Whether an entity stands under `id` in a store of any sub-pool. The current one is asked
    /// first; the pointer is not followed.
    static bool holds(EntityStore SubPool::*store, int id, Base const * entity) noexcept;

    /// While one of these lives, all entities of the sub-pool go: its tables need not fit their
    /// size to what is left.
    class Clearing
    {
    public:
        explicit Clearing(SubPool const * subPool) noexcept
            : m_Before(std::exchange(m_Cleared, subPool))
        {}
        Clearing(Clearing const &) = delete;
        Clearing & operator=(Clearing const &) = delete;
        ~Clearing() { m_Cleared = m_Before; }

        static bool concerns(SubPool const & subPool) noexcept { return &subPool == m_Cleared; }

    private:
        inline static SubPool const * m_Cleared = nullptr;

        SubPool const * m_Before;
    };
};

/// The library's way into the tables of entities.
struct TableAccess
{
    static IdTree & tree(EntityTable & table) noexcept { return *table.m_Tree; }
};

/// Makes a `Proxy` with the given id and arguments in a store of the current sub-pool: what every
/// `create` does.
///
/// An id of 0 becomes the largest id plus 1, or 1 in an empty store. Null when the id is taken or
/// none is left; the arguments then stay untouched and the caller's.
template <class Proxy, class... Arguments>
Proxy * createEntity(EntityStore SubPool::*store, int id, Arguments &&... arguments)
{
    SubPool * const subPool = CurrentSubPool::get();
    if (subPool == nullptr)
        return nullptr;
    IdTree & tree = TableAccess::tree((subPool->*store).m_Entities);
    if (id == 0) {
        if (tree.size() == 0)
            id = 1;
        else if (tree.largest() == INT_MAX)
            return nullptr;
        else
            id = tree.largest() + 1;
    }
    // The id is taken before the entity stands, so that nothing has to be undone when it is not
    // free; until the entity is there, the tree itself holds its place.
    void ** const slot = tree.insert(id, &tree);
    if (slot == nullptr)
        return nullptr;
    try {
        auto * const entity = new Proxy(id, std::forward<Arguments>(arguments)...);
        *slot = static_cast<Base *>(entity);
        return entity;
    } catch (...) {
        tree.erase(id);
        throw;
    }
}

/// Takes an entity on its way out from the current sub-pool: what every entity's destructor does.
inline void leaveStore(EntityStore SubPool::*store, Base const * entity) noexcept
{
    int const id = entity->getId();
    SubPool * const subPool = CurrentSubPool::get();
    if (subPool == nullptr)
        return;
    IdTree & tree = TableAccess::tree((subPool->*store).m_Entities);
    if ((CurrentSubPool::Clearing::concerns(*subPool) ? tree.eraseNext(id) : tree.erase(id)) !=
        entity)
        CurrentSubPool::leaveOthers(store, id, entity);
}

} // namespace transl_tk

#endif
