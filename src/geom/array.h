#ifndef KELD_TRANSL_GEOM_ARRAY_H
#define KELD_TRANSL_GEOM_ARRAY_H

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <memory>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace geom {

/// `count` as the length of an array of elements of `elementSize` bytes. When it is negative or
/// more than an array can hold, std::length_error with the same text on every standard library.
inline std::size_t arrayLength(long long count, std::size_t elementSize)
{
    auto const length = static_cast<std::size_t>(count); // enormous when the count is negative
    if (length > PTRDIFF_MAX / elementSize)
        throw std::length_error("vector<T> too long");
    return length;
}

/// Plain values in a row, as many as it was made with.
///
/// Unlike a vector it leaves new elements unset: whoever makes one fills it.
template <class T> class Array
{
    static_assert(std::is_trivially_copyable_v<T>);

public:
    using size_type = long long; ///< of the length that it is made with, which may be negative

    Array() noexcept = default;
    explicit Array(long long count) : m_Size(arrayLength(count, ElementSize))
    {
        if (m_Size != 0)
            m_Elements = std::make_unique_for_overwrite<T[]>(m_Size);
    }
    Array(Array && other) noexcept
        : m_Elements(std::move(other.m_Elements)), m_Size(std::exchange(other.m_Size, 0))
    {}
    Array & operator=(Array && other) noexcept
    {
        m_Elements = std::move(other.m_Elements);
        m_Size = std::exchange(other.m_Size, 0);
        return *this;
    }
    ~Array() = default;

    std::size_t size() const noexcept { return m_Size; }
    bool empty() const noexcept { return m_Size == 0; }
    std::size_t bytes() const noexcept { return m_Size * ElementSize; }

    T * data() noexcept { return m_Elements.get(); }
    T const * data() const noexcept { return m_Elements.get(); }
    T * begin() noexcept { return data(); }
    T * end() noexcept { return data() + m_Size; }

    /// Fills all elements from memory that holds as many, in one copy.
    void copyFrom(void const * source)
    {
        if (!empty())
            std::memcpy(data(), source, bytes());
    }

    /// Fills memory that has room for all elements, in one copy.
    void copyTo(void * target) const
    {
        if (!empty())
            std::memcpy(target, data(), bytes());
    }

private:
    static constexpr std::size_t ElementSize = sizeof(T); // NOLINT(bugprone-sizeof-expression)

    std::unique_ptr<T[]> m_Elements;
    std::size_t m_Size = 0;
};

} // namespace geom

#endif
