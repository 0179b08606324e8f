#ifndef KELD_TRANSL_EXCHANGE_SIZE_COUNTER_H
#define KELD_TRANSL_EXCHANGE_SIZE_COUNTER_H

#include <array>
#include <cstddef>
#include <string_view>

namespace transl_tk {

/// Takes fields like a `StreamWriter` and adds up their bytes.
class SizeCounter
{
public:
    static constexpr bool Reads = false;
    static constexpr bool CountsOnly = true;

    constexpr void u8(bool const &) { m_Size += 1; }
    constexpr void byte(unsigned char) { m_Size += 1; }
    constexpr void i32(int const &) { m_Size += 4; }
    constexpr void f32(float) { m_Size += 4; }
    template <std::size_t Count> constexpr void f64(double const (&)[Count])
    {
        m_Size += static_cast<long long>(8 * Count);
    }
    constexpr void f64(double const &) { m_Size += 8; }
    template <std::size_t Count> constexpr void f64(std::array<double, Count> const &)
    {
        m_Size += static_cast<long long>(8 * Count);
    }
    template <class List> constexpr void elements(List const & elements, std::size_t count)
    {
        m_Size += static_cast<long long>(count * sizeof(*elements.data()));
    }
    template <class List> constexpr void counted(List const & elements)
    {
        count(elements.size());
        this->elements(elements, elements.size());
    }
    constexpr void count(std::size_t) { m_Size += 4; }
    constexpr void string(std::string_view text)
    {
        m_Size += 4 + static_cast<long long>(text.size());
    }

    /// Adds `count` records of `bytes` bytes.
    constexpr void records(std::size_t count, std::size_t bytes)
    {
        m_Size += static_cast<long long>(count * bytes);
    }

    constexpr long long size() const { return m_Size; }

private:
    long long m_Size = 0;
};

/// Bytes of a record that has the same size in every entity.
template <class Record> constexpr std::size_t fixedSizeOf()
{
    SizeCounter counter;
    Record record{};
    record.fields(counter);
    return static_cast<std::size_t>(counter.size());
}

} // namespace transl_tk

#endif
