#ifndef KELD_TRANSL_MODEL_ENTITY_KINDS_H
#define KELD_TRANSL_MODEL_ENTITY_KINDS_H

#include <keld-transl/model/sub_pool.h>

namespace transl_tk {

class Base;

/// The store of the entities of a kind; null for a number that is no `EntityKind`.
EntityStore SubPool::*storeOfKind(int kind) noexcept;

/// A pointer to an entity that may die before it is followed: kind and id stand beside it, so that
/// the store can be asked first.
struct EntityLink
{
    /// The link to an entity that lives now.
    static EntityLink to(Base & entity);

    /// The entity when `subPool` still lists it, else null. A new entity of the same kind and id at
    /// the old one's address counts as the old one.
    Base * get(SubPool const & subPool) const noexcept;

    Base * entity;
    int kind;
    int id;
};

} // namespace transl_tk

#endif
