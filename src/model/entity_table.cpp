#include "model/id_tree.h"

#include <keld-transl/model/entity_table.h>

#include <climits>
#include <new>

namespace transl_tk {

EntityTable::EntityTable() : m_Tree(new IdTree) {}

EntityTable::EntityTable(EntityTable const & other) : m_Tree(new IdTree(*other.m_Tree)) {}

EntityTable::EntityTable(EntityTable && other) noexcept : m_Tree(other.m_Tree)
{
    other.m_Tree = nullptr;
}

EntityTable & EntityTable::operator=(EntityTable const & other)
{
    return *this = EntityTable(other);
}

EntityTable & EntityTable::operator=(EntityTable && other) noexcept
{
    std::swap(m_Tree, other.m_Tree);
    return *this;
}

EntityTable::~EntityTable()
{
    delete m_Tree;
}

EntityTable::const_iterator EntityTable::begin() const noexcept
{
    auto const [id, entity] = m_Tree->atOrAfter(INT_MIN);
    return entity != nullptr ? const_iterator(m_Tree, id, static_cast<Base *>(entity)) : end();
}

EntityTable::const_iterator EntityTable::end() const noexcept
{
    return const_iterator(m_Tree);
}

EntityTable::const_iterator EntityTable::find(int id) const noexcept
{
    Base * const entity = lookup(id);
    return entity != nullptr ? const_iterator(m_Tree, id, entity) : end();
}

EntityTable::size_type EntityTable::count(int id) const noexcept
{
    return lookup(id) != nullptr ? 1 : 0;
}

Base * EntityTable::lookup(int id) const noexcept
{
    return static_cast<Base *>(m_Tree->find(id));
}

EntityTable::size_type EntityTable::size() const noexcept
{
    return m_Tree->size();
}

int EntityTable::largest() const noexcept
{
    return m_Tree->largest();
}

void EntityTable::walk(void (*visit)(void *, int, void *), void * context) const
{
    m_Tree->walk(visit, context);
}

EntityTable::const_iterator &
EntityTable::const_iterator::operator=(const_iterator const & other) noexcept
{
    if (this != &other) {
        // The id is a constant part of the entry, so the entry is made anew.
        m_Entry.~value_type();
        new (&m_Entry) value_type(other.m_Entry);
        m_Tree = other.m_Tree;
        m_AtEnd = other.m_AtEnd;
    }
    return *this;
}

EntityTable::const_iterator & EntityTable::const_iterator::operator++() noexcept
{
    int const id = m_Entry.first;
    if (id == INT_MAX)
        return *this = const_iterator(m_Tree);
    auto const [next, entity] = m_Tree->atOrAfter(id + 1);
    return *this = entity != nullptr ? const_iterator(m_Tree, next, static_cast<Base *>(entity))
                                     : const_iterator(m_Tree);
}

EntityTable::const_iterator EntityTable::const_iterator::operator++(int) noexcept
{
    const_iterator const before = *this;
    ++*this;
    return before;
}

EntityTable::const_iterator & EntityTable::const_iterator::operator--() noexcept
{
    auto const [previous, entity] = m_Tree->atOrBefore(m_AtEnd ? INT_MAX : m_Entry.first - 1);
    return *this = const_iterator(m_Tree, previous, static_cast<Base *>(entity));
}

EntityTable::const_iterator EntityTable::const_iterator::operator--(int) noexcept
{
    const_iterator const before = *this;
    --*this;
    return before;
}

} // namespace transl_tk
