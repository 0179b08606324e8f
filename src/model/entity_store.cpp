#include "model/id_tree.h"
#include "model/user_set.h"

#include <keld-transl/model/base.h>
#include <keld-transl/model/entity_store.h>

#include <algorithm>
#include <utility>

namespace transl_tk {

UserTable::UserTable() : m_Tree(new IdTree) {}

UserTable::UserTable(UserTable const & other) : m_Tree(new IdTree(*other.m_Tree)) {}

UserTable::UserTable(UserTable && other) noexcept : m_Tree(std::exchange(other.m_Tree, nullptr)) {}

UserTable & UserTable::operator=(UserTable const & other)
{
    return *this = UserTable(other);
}

UserTable & UserTable::operator=(UserTable && other) noexcept
{
    std::swap(m_Tree, other.m_Tree);
    return *this;
}

UserTable::~UserTable()
{
    delete m_Tree;
}

std::size_t UserTable::size() const noexcept
{
    return m_Tree->size();
}

void UserSet::insert(Base const * user)
{
    if (!m_Many && m_Count == Inline) {
        auto many = std::make_unique<std::unordered_map<Base const *, std::size_t>>();
        for (Base const * const other : m_Few)
            ++(*many)[other];
        m_Many = std::move(many);
    }
    if (m_Many)
        ++(*m_Many)[user];
    else
        m_Few[m_Count++] = user;
}

void UserSet::erase(Base const * user)
{
    if (m_Many) {
        m_Many->erase(user);
    } else {
        auto const end = m_Few.begin() + static_cast<std::ptrdiff_t>(m_Count);
        m_Count = static_cast<std::uint32_t>(std::remove(m_Few.begin(), end, user) - m_Few.begin());
    }
}

bool UserSet::empty() const
{
    return m_Many ? m_Many->empty() : m_Count == 0;
}

void UserSet::startAnew() noexcept
{
    m_Many.reset();
    m_Count = 0;
    ++m_Generation;
}

std::uint32_t addUser(EntityStore & store, Base const * carrier, Base * user)
{
    if (carrier == nullptr)
        return 0;
    IdTree & tree = *store.m_Users.m_Tree;
    auto * users = static_cast<UserSet *>(tree.find(carrier->getId()));
    if (users == nullptr) {
        auto fresh = std::make_unique<UserSet>();
        tree.insert(carrier->getId(), fresh.get());
        users = fresh.release();
    }
    users->insert(user);
    return users->generation();
}

bool removeUser(EntityStore & store, Base const * carrier, Base const * user)
{
    if (carrier == nullptr)
        return false;
    return leavesNobody(usersOf(store, carrier->getId()), user);
}

bool leavesNobody(UserSet * users, Base const * user)
{
    if (users == nullptr)
        return true;
    users->erase(user);
    return users->empty();
}

UserSet * usersOf(EntityStore & store, int id) noexcept
{
    return static_cast<UserSet *>(store.m_Users.m_Tree->find(id));
}

void startUnused(EntityStore & store, int id) noexcept
{
    // A new carrier has the largest id as a rule, and nobody had that before.
    IdTree const & tree = *store.m_Users.m_Tree;
    if (tree.size() == 0 || id > tree.largest())
        return;
    if (UserSet * const users = usersOf(store, id))
        users->startAnew();
}

void forgetUsers(EntityStore & store)
{
    IdTree & tree = *store.m_Users.m_Tree;
    tree.walk([](void *, int, void * users) { delete static_cast<UserSet *>(users); }, nullptr);
    tree = IdTree();
}

} // namespace transl_tk
