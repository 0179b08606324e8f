#ifndef KELD_TRANSL_ATTRIBUTES_ENTITY_LINKS_H
#define KELD_TRANSL_ATTRIBUTES_ENTITY_LINKS_H

#include "model/entity.h"
#include "model/entity_kinds.h"
#include "model/small_list.h"

namespace transl_tk {

/// The entities that something hangs on, not owned, in order of adding. One may stand there more
/// than once, and may die while it stands there.
class EntityLinks
{
public:
    /// Null adds nothing.
    void add(Base * entity)
    {
        if (entity != nullptr)
            m_Links.add(EntityLink::to(*entity));
    }

    /// Removes every occurrence of `entity`, which need not live any more.
    void remove(Base const * entity) noexcept
    {
        m_Links.removeIf([entity](EntityLink const & link) { return link.entity == entity; });
    }

    /// Calls `callback` for every entity that lives in the current sub-pool. False at the first
    /// false. The callback may add and remove entities, and switch sub-pools.
    bool forEach(bool (*callback)(Base *, void *), void * user) const
    {
        for (std::size_t i = 0; i < m_Links.size(); ++i) {
            SubPool const * const subPool = CurrentSubPool::get();
            Base * const entity = subPool != nullptr ? m_Links[i].get(*subPool) : nullptr;
            if (entity != nullptr && !callback(entity, user))
                return false;
        }
        return true;
    }

private:
    SmallList<EntityLink, 2> m_Links;
};

} // namespace transl_tk

#endif
