#ifndef KELD_TRANSL_MODEL_ENTITY_STORE_H
#define KELD_TRANSL_MODEL_ENTITY_STORE_H

#include <keld-transl/model/entity_table.h>

#include <cstddef>
#include <cstdint>

namespace transl_tk {

class Base;
class UserSet;
struct EntityStore;

/// The users of shared carriers by the carrier's id. Filled and read by the library alone.
class KELD_TRANSL_EXPORT UserTable
{
public:
    UserTable();
    UserTable(UserTable const &);
    UserTable(UserTable &&) noexcept;
    UserTable & operator=(UserTable const &);
    UserTable & operator=(UserTable &&) noexcept;
    ~UserTable();

    /// Carriers that have, or once had, a user.
    std::size_t size() const noexcept;

private:
    friend std::uint32_t addUser(EntityStore &, Base const *, Base *);
    friend UserSet * usersOf(EntityStore &, int) noexcept;
    friend void startUnused(EntityStore &, int) noexcept;
    friend void forgetUsers(EntityStore &);

    IdTree * m_Tree;
};

/// All entities of one kind in a sub-pool, and the users of those that are shared carriers.
struct EntityStore
{
    /// The entities by id. Their order is that of every walk and of the model stream.
    EntityTable m_Entities;

    /// Only curves, surfaces, vertices and edges ever have entries.
    UserTable m_Users;
};

} // namespace transl_tk

#endif
