#ifndef KELD_TRANSL_MODEL_ENTITY_TABLE_H
#define KELD_TRANSL_MODEL_ENTITY_TABLE_H

#include <keld-transl/export.h>

#include <cstddef>
#include <iterator>
#include <type_traits>
#include <utility>

namespace transl_tk {

class Base;
class IdTree;

/// Ordered map from id to entity, with the reading half of `std::map`'s interface.
///
/// Any signed 32-bit id is a key, and the order is numeric. The table refers to entities and owns
/// none of them. Lookup of dense ids costs a few array accesses; a dense id takes some 8 bytes, the
/// sparsest ones stay below what a balanced tree takes.
///
/// Entities enter and leave it by themselves. Neither invalidates an iterator to another entity.
class KELD_TRANSL_EXPORT EntityTable
{
public:
    using key_type = int;
    using mapped_type = Base *;
    using value_type = std::pair<int const, Base *>;
    using size_type = std::size_t;

    /// Goes through the table in ascending order of ids, forth and back.
    class KELD_TRANSL_EXPORT const_iterator
    {
    public:
        using iterator_category = std::bidirectional_iterator_tag;
        using value_type = EntityTable::value_type;
        using difference_type = std::ptrdiff_t;
        using pointer = value_type const *;
        using reference = value_type const &;

        const_iterator() noexcept : m_Entry(0, nullptr) {}
        const_iterator(const_iterator const &) noexcept = default;
        const_iterator & operator=(const_iterator const & other) noexcept;
        ~const_iterator() = default;

        reference operator*() const noexcept { return m_Entry; }
        pointer operator->() const noexcept { return &m_Entry; }

        const_iterator & operator++() noexcept;
        const_iterator operator++(int) noexcept;
        const_iterator & operator--() noexcept;
        const_iterator operator--(int) noexcept;

        friend bool operator==(const_iterator const & a, const_iterator const & b) noexcept
        {
            return a.m_AtEnd == b.m_AtEnd && (a.m_AtEnd || a.m_Entry.first == b.m_Entry.first);
        }
        friend bool operator!=(const_iterator const & a, const_iterator const & b) noexcept
        {
            return !(a == b);
        }

    private:
        friend class EntityTable;
        const_iterator(IdTree const * tree, int id, Base * entity) noexcept
            : m_Tree(tree), m_Entry(id, entity), m_AtEnd(false)
        {}
        explicit const_iterator(IdTree const * tree) noexcept : m_Tree(tree), m_Entry(0, nullptr) {}

        IdTree const * m_Tree = nullptr;
        value_type m_Entry;
        bool m_AtEnd = true;
    };
    using iterator = const_iterator;

    EntityTable();
    EntityTable(EntityTable const &);
    EntityTable(EntityTable &&) noexcept;
    EntityTable & operator=(EntityTable const &);
    EntityTable & operator=(EntityTable &&) noexcept;
    ~EntityTable();

    const_iterator begin() const noexcept;
    const_iterator end() const noexcept;

    /// The entry of `id`, `end()` when there is none.
    const_iterator find(int id) const noexcept;

    /// 1 when `id` is a key, else 0.
    size_type count(int id) const noexcept;

    /// The entity under `id`, null when there is none.
    Base * lookup(int id) const noexcept;

    size_type size() const noexcept;
    bool empty() const noexcept { return size() == 0; }

    /// The largest id; the table must not be empty.
    int largest() const noexcept;

    /// Calls `visit(id, entity)` for every entry in ascending order; `visit` must not change the
    /// table. The fastest way through it.
    template <class Visit> void forEach(Visit && visit) const
    {
        walk(
            [](void * context, int id, void * entity) {
                (*static_cast<std::remove_reference_t<Visit> *>(context))(
                    id, static_cast<Base *>(entity));
            },
            const_cast<void *>(static_cast<void const *>(&visit)));
    }

private:
    friend struct TableAccess;

    void walk(void (*visit)(void *, int, void *), void * context) const;

    IdTree * m_Tree;
};

} // namespace transl_tk

#endif
