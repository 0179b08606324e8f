#ifndef KELD_TRANSL_MODEL_USER_SET_H
#define KELD_TRANSL_MODEL_USER_SET_H

#include "model/block_pool.h"

#include <keld-transl/model/entity_store.h>

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <unordered_map>

namespace transl_tk {

class Base;

/// The entities that use one carrier; one may use it more than once.
///
/// A carrier has two or three users as a rule: they stand in the set itself, and only a larger set
/// becomes a hash table.
class UserSet : public Pooled<UserSet>
{
public:
    UserSet() = default;
    UserSet(UserSet const &) = delete;
    UserSet & operator=(UserSet const &) = delete;

    void insert(Base const * user);
    /// Removes every occurrence of `user`.
    void erase(Base const * user);
    bool empty() const;

    /// Empties the set for another carrier that takes over the id of the one before.
    void startAnew() noexcept;
    /// Carriers that had this id before.
    std::uint32_t generation() const noexcept { return m_Generation; }

private:
    static constexpr std::uint32_t Inline = 4;

    std::array<Base const *, Inline> m_Few{};
    std::uint32_t m_Count = 0; ///< users in `m_Few`, while there is no `m_Many`
    std::uint32_t m_Generation = 0;
    std::unique_ptr<std::unordered_map<Base const *, std::size_t>> m_Many;
};

/// Enters `user` among the users of `carrier`, an entity of `store`; a null carrier has none.
/// Returns the generation of the carrier.
std::uint32_t addUser(EntityStore & store, Base const * carrier, Base * user);

/// Removes `user` from the users of `carrier`. True when nobody uses the carrier any more, so that
/// a user on its way out frees it; false for a null carrier.
bool removeUser(EntityStore & store, Base const * carrier, Base const * user);

/// The same for the set of the carrier's users, null when it never had one.
bool leavesNobody(UserSet * users, Base const * user);

/// The users of the carrier of this id, null when there never was one.
UserSet * usersOf(EntityStore & store, int id) noexcept;

/// Empties the set of users that an earlier carrier of this id may have left.
void startUnused(EntityStore & store, int id) noexcept;

/// Frees the sets of users of every carrier in `store`.
void forgetUsers(EntityStore & store);

} // namespace transl_tk

#endif
