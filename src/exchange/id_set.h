#ifndef KELD_TRANSL_EXCHANGE_ID_SET_H
#define KELD_TRANSL_EXCHANGE_ID_SET_H

#include <array>
#include <cstdint>
#include <unordered_map>

namespace transl_tk {

/// Ids of which most have neighbours in the set: a bit each, in small pages.
class IdSet
{
public:
    /// False when the id was there.
    bool insert(int id)
    {
        auto const key = static_cast<std::uint32_t>(id);
        if (m_Page == nullptr || m_PageNumber != key / PageSize) {
            m_Page = &m_Pages[key / PageSize];
            m_PageNumber = key / PageSize;
        }
        std::uint64_t & word = (*m_Page)[key % PageSize / 64];
        std::uint64_t const bit = std::uint64_t{1} << key % 64;
        if ((word & bit) != 0)
            return false;
        word |= bit;
        return true;
    }

private:
    static constexpr std::uint32_t PageSize = 512;
    using Page = std::array<std::uint64_t, PageSize / 64>;

    std::unordered_map<std::uint32_t, Page> m_Pages;
    Page * m_Page = nullptr; ///< the page that was used last
    std::uint32_t m_PageNumber = 0;
};

} // namespace transl_tk

#endif
