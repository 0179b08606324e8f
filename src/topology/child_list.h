#ifndef KELD_TRANSL_TOPOLOGY_CHILD_LIST_H
#define KELD_TRANSL_TOPOLOGY_CHILD_LIST_H

#include "model/small_list.h"

#include <cstddef>
#include <cstdint>

namespace transl_tk {

/// Pointers to what a parent owns, in the order in which it came. The first `Few` of them stand in
/// the list itself.
template <class Child, std::uint32_t Few> class ChildList
{
public:
    std::size_t size() const noexcept { return m_Children.size(); }
    Child * operator[](std::size_t index) const noexcept { return m_Children[index]; }

    /// Appends a child, which may be null.
    void add(Child * child) { m_Children.add(child); }

    /// Calls `visit` for each child in order, also for one that a call adds. Stops at the first
    /// false and returns false.
    bool forEach(bool (*visit)(Child *, void *), void * user) const
    {
        for (std::size_t i = 0; i < size(); ++i)
            if (!visit(m_Children[i], user))
                return false;
        return true;
    }

    /// Frees all children in order.
    void destroy()
    {
        for (std::size_t i = 0; i < size(); ++i) {
            // The next one is on its way from memory while this one goes.
            if (i + 1 < size())
                __builtin_prefetch(m_Children[i + 1], 1);
            Child::destruct(m_Children[i]);
        }
    }

    /// Empties the list and frees nobody.
    void forget() noexcept { m_Children.clear(); }

private:
    SmallList<Child *, Few> m_Children;
};

} // namespace transl_tk

#endif
