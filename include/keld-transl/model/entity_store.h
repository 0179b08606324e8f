#ifndef KELD_TRANSL_MODEL_ENTITY_STORE_H
#define KELD_TRANSL_MODEL_ENTITY_STORE_H

#include <keld-transl/model/entity_table.h>

#include <unordered_map>

namespace transl_tk {

class UserSet;

/// All entities of one kind in a sub-pool, and the users of those that are shared carriers.
struct EntityStore
{
    /// The entities by id. Their order is that of every walk and of the model stream.
    EntityTable m_Entities;

    /// The entities that use a carrier, by the carrier's id. Only curves, surfaces, vertices and
    /// edges ever have entries.
    std::unordered_map<int, UserSet *> m_Users;
};

} // namespace transl_tk

#endif
