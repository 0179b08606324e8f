#ifndef KELD_TRANSL_TOPOLOGY_CHILD_LIST_H
#define KELD_TRANSL_TOPOLOGY_CHILD_LIST_H

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <new>

namespace transl_tk {

/// Pointers to what a parent owns, in the order in which it came. Up to `Inline` of them stand in
/// the list itself.
template <class Child, std::uint32_t Inline> class ChildList
{
public:
    ChildList() = default;
    ChildList(ChildList const &) = delete;
    ChildList & operator=(ChildList const &) = delete;
    ~ChildList() = default;

    std::size_t size() const { return m_Count; }
    Child * operator[](std::size_t index) const
    {
        return m_Count > Inline ? m_Many[index] : m_Few[index];
    }

    /// Appends a child, which may be null.
    void add(Child * child)
    {
        if (m_Count < Inline)
            m_Few[m_Count] = child;
        else
            addToMany(child);
        ++m_Count;
    }

    /// Calls `visit` for each child in order, also for one that a call adds. Stops at the first
    /// false and returns false.
    bool forEach(bool (*visit)(Child *, void *), void * user) const
    {
        for (std::size_t i = 0; i < size(); ++i)
            if (!visit((*this)[i], user))
                return false;
        return true;
    }

    /// Frees all children in order.
    void destroy()
    {
        for (std::size_t i = 0; i < size(); ++i)
            Child::destruct((*this)[i]);
    }

    /// Empties the list and frees nobody.
    void forget() { m_Count = 0; }

private:
    void addToMany(Child * child)
    {
        if (m_Count == Inline || m_Count == m_Capacity) {
            if (m_Count > UINT32_MAX / 2)
                throw std::bad_alloc();
            std::uint32_t const capacity = 2 * m_Count;
            auto many = std::make_unique<Child *[]>(capacity);
            for (std::uint32_t i = 0; i < m_Count; ++i)
                many[i] = (*this)[i];
            m_Many = std::move(many);
            m_Capacity = capacity;
        }
        m_Many[m_Count] = child;
    }

    std::array<Child *, Inline> m_Few{};
    std::unique_ptr<Child *[]> m_Many; ///< holds all of them once they are more than `Inline`
    std::uint32_t m_Count = 0;
    std::uint32_t m_Capacity = 0; ///< of `m_Many`
};

} // namespace transl_tk

#endif
