#ifndef KELD_TRANSL_MODEL_CARRIER_H
#define KELD_TRANSL_MODEL_CARRIER_H

#include "model/entity.h"
#include "model/user_set.h"

#include <cstdint>
#include <utility>

namespace transl_tk {

/// `createEntity` for the kinds that others share: a new carrier has no users, whoever had its id
/// before.
template <class Proxy, class... Arguments>
Proxy * createCarrier(EntityStore SubPool::*store, int id, Arguments &&... arguments)
{
    Proxy * const carrier = createEntity<Proxy>(store, id, std::forward<Arguments>(arguments)...);
    SubPool * const subPool = CurrentSubPool::get();
    if (carrier != nullptr && subPool != nullptr)
        startUnused(subPool->*store, carrier->getId());
    return carrier;
}

/// A user's reference to a carrier that it shares with others, or to none.
///
/// Somebody may destroy the carrier nevertheless, and another one may even take its id and its
/// place in memory. The reference therefore remembers id and generation, and asks the store before
/// it touches anything.
template <class Carrier, EntityStore SubPool::*Store> class CarrierLink
{
public:
    CarrierLink() = default;

    /// A reference of `user`, which becomes one of the carrier's users.
    CarrierLink(Carrier * carrier, Base * user) : m_Carrier(carrier)
    {
        SubPool * const subPool = CurrentSubPool::get();
        if (carrier == nullptr || subPool == nullptr)
            return;
        m_Id = carrier->getId();
        m_Generation = addUser(subPool->*Store, carrier, user);
    }

    /// The carrier as it was given, dead or alive.
    Carrier * get() const { return m_Carrier; }

    friend bool operator==(CarrierLink const &, CarrierLink const &) = default;

    /// The id of the carrier while it lives, -1 otherwise.
    int livingId() const
    {
        SubPool * const subPool = CurrentSubPool::get();
        return subPool != nullptr && stands(*subPool) ? m_Id : -1;
    }

    /// Takes `user` from the carrier's users, which may leave it without any.
    void leave(Base const * user) const
    {
        if (SubPool * const subPool = CurrentSubPool::get())
            isLastUser(*subPool, user);
    }

    /// The same, and frees the carrier when nobody uses it any more.
    void release(Base const * user) const
    {
        SubPool * const subPool = CurrentSubPool::get();
        if (subPool != nullptr && isLastUser(*subPool, user))
            Carrier::destruct(m_Carrier);
    }

private:
    bool stands(SubPool & subPool) const
    {
        return m_Carrier != nullptr && TableAccess::tree((subPool.*Store).m_Entities).find(m_Id) ==
                                           static_cast<Base const *>(m_Carrier);
    }

    bool isLastUser(SubPool & subPool, Base const * user) const
    {
        if (!stands(subPool))
            return false;
        UserSet * const users = usersOf(subPool.*Store, m_Id);
        if (users != nullptr && users->generation() != m_Generation)
            return false;
        return leavesNobody(users, user);
    }

    Carrier * m_Carrier = nullptr;
    int m_Id = 0;
    std::uint32_t m_Generation = 0;
};

} // namespace transl_tk

#endif
