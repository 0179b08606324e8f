#ifndef KELD_TRANSL_MODEL_SMALL_LIST_H
#define KELD_TRANSL_MODEL_SMALL_LIST_H

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <type_traits>

namespace transl_tk {

/// A growable row of plain values. The first `Few` stand in the list itself: most lists hold no
/// more, and cost no allocation of their own.
template <class T, std::uint32_t Few> class SmallList
{
    static_assert(std::is_trivial_v<T>);

public:
    SmallList() noexcept : m_Few{} {}
    SmallList(SmallList const &) = delete;
    SmallList & operator=(SmallList const &) = delete;
    ~SmallList()
    {
        if (m_Room > Few)
            delete[] m_Many;
    }

    std::size_t size() const noexcept { return m_Size; }
    T const & operator[](std::size_t index) const noexcept { return begin()[index]; }
    T const * begin() const noexcept { return m_Room > Few ? m_Many : m_Few; }
    T const * end() const noexcept { return begin() + m_Size; }

    /// Sees to it that the next `add` cannot fail.
    void makeRoom()
    {
        if (m_Size < m_Room)
            return;
        if (m_Room > UINT32_MAX / 2)
            throw std::bad_alloc();
        std::uint32_t const room = m_Room * 2;
        T * const many = new T[room];
        std::copy(begin(), end(), many);
        if (m_Room > Few)
            delete[] m_Many;
        m_Many = many;
        m_Room = room;
    }

    void add(T value)
    {
        makeRoom();
        first()[m_Size++] = value;
    }

    void clear() noexcept { m_Size = 0; }

    /// Removes all values that `matches`; the others keep their order.
    template <class Matches> void removeIf(Matches matches) noexcept
    {
        T * const last = std::remove_if(first(), first() + m_Size, matches);
        m_Size = static_cast<std::uint32_t>(last - first());
    }

private:
    T * first() noexcept { return m_Room > Few ? m_Many : m_Few; }

    std::uint32_t m_Size = 0;
    std::uint32_t m_Room = Few;
    union {
        T m_Few[Few]; ///< while `m_Room` is `Few`
        T * m_Many;
    };
};

} // namespace transl_tk

#endif
