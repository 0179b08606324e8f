#include "product/hierarchy_list.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <new>

namespace transl_tk {

std::size_t HierarchyList::slotOf(Hierarchy const * node) const noexcept
{
    auto const bits = std::bit_cast<std::uintptr_t>(node);
    return static_cast<std::size_t>((bits * 0x9E3779B97F4A7C15ULL) >> 32) & (m_Slots - 1);
}

HierarchyList::Entry * HierarchyList::find(Hierarchy const * node) noexcept
{
    std::size_t const position = positionOf(node);
    return position != NoPosition ? &m_Entries[position] : nullptr;
}

std::size_t HierarchyList::positionOf(Hierarchy const * node) const noexcept
{
    if (node == nullptr)
        return NoPosition;
    if (!m_Index && m_Entries.size() > LongestWithoutIndex)
        startIndex();
    if (!m_Index) {
        auto const entry = std::find_if(m_Entries.begin(), m_Entries.end(),
                                        [&](Entry const & each) { return each.hierarchy == node; });
        return entry != m_Entries.end() ? static_cast<std::size_t>(entry - m_Entries.begin())
                                        : NoPosition;
    }
    // A slot whose node has gone leads to a gap, to no entry, or to one that came later: no match.
    for (std::size_t slot = slotOf(node); m_Index[slot] != 0; slot = (slot + 1) & (m_Slots - 1)) {
        std::size_t const position = m_Index[slot] - 1;
        if (position < m_Entries.size() && m_Entries[position].hierarchy == node)
            return position;
    }
    return NoPosition;
}

/// Enters all nodes in a new index. Without memory for one there is none, and the row is searched.
void HierarchyList::startIndex() const noexcept
{
    std::size_t const slots = std::bit_ceil((m_Entries.size() + 1) * 3 / 2);
    m_Index.reset(new (std::nothrow) std::uint32_t[slots]());
    if (!m_Index)
        return;
    m_Slots = static_cast<std::uint32_t>(slots);
    m_Taken = 0;
    for (std::size_t position = 0; position < m_Entries.size(); ++position)
        if (m_Entries[position].hierarchy != nullptr)
            enterInIndex(position);
}

void HierarchyList::enterInIndex(std::size_t position) const noexcept
{
    std::size_t slot = slotOf(m_Entries[position].hierarchy);
    while (m_Index[slot] != 0)
        slot = (slot + 1) & (m_Slots - 1);
    m_Index[slot] = static_cast<std::uint32_t>(position + 1);
    ++m_Taken;
}

/// Moves the entries together and fills the index, as large as it is, anew.
void HierarchyList::closeGaps() noexcept
{
    m_Entries.erase(std::remove_if(m_Entries.begin(), m_Entries.end(),
                                   [](Entry const & each) { return each.hierarchy == nullptr; }),
                    m_Entries.end());
    if (!m_Index)
        return;
    std::fill_n(m_Index.get(), m_Slots, 0U);
    m_Taken = 0;
    for (std::size_t position = 0; position < m_Entries.size(); ++position)
        enterInIndex(position);
}

/// Makes sure that one more entry finds a free slot.
void HierarchyList::makeRoomInIndex()
{
    std::size_t const most = std::size_t{m_Slots} / 4 * 3;
    if (m_Index ? m_Taken < most : m_Entries.size() < LongestWithoutIndex)
        return;
    std::size_t const wanted = std::bit_ceil((static_cast<std::size_t>(m_Size) + 1) * 3 / 2);
    std::size_t const slots = std::max<std::size_t>(wanted, 2 * LongestWithoutIndex);
    if (!m_Index || slots != m_Slots) {
        m_Index = std::make_unique<std::uint32_t[]>(slots);
        m_Slots = static_cast<std::uint32_t>(slots);
    }
    closeGaps();
}

void HierarchyList::insert(Hierarchy * node, int number)
{
    if (find(node) == nullptr)
        append(node, number);
}

void HierarchyList::append(Hierarchy * node, int number)
{
    if (m_Index)
        makeRoomInIndex();
    bool const ascends = m_Entries.empty() || m_Entries.back().number < number;
    m_Entries.emplace_back(node, number);
    if (m_Index)
        enterInIndex(m_Entries.size() - 1);
    m_Ascending = ascends && (m_Ascending || m_Entries.size() == 1);
    ++m_Size;
}

void HierarchyList::erase(Hierarchy const * node) noexcept
{
    Entry * const entry = find(node);
    if (entry == nullptr)
        return;
    entry->hierarchy = nullptr;
    --m_Size;
    while (!m_Entries.empty() && m_Entries.back().hierarchy == nullptr)
        m_Entries.pop_back();
    if (m_Entries.size() > 2 * static_cast<std::size_t>(m_Size) + LongestWithoutIndex)
        closeGaps();
    if (m_Size == 0) {
        m_Entries = {};
        m_Index.reset();
        m_Slots = 0;
        m_Taken = 0;
    }
}

std::vector<HierarchyList::Entry> HierarchyList::entries() const
{
    std::vector<Entry> found;
    found.reserve(static_cast<std::size_t>(m_Size));
    std::copy_if(m_Entries.begin(), m_Entries.end(), std::back_inserter(found),
                 [](Entry const & each) { return each.hierarchy != nullptr; });
    return found;
}

std::vector<HierarchyRef> HierarchyList::byNumber() const
{
    std::vector<HierarchyRef> found;
    found.reserve(static_cast<std::size_t>(m_Size));
    if (m_Ascending) {
        for (Entry const & each : m_Entries)
            if (each.hierarchy != nullptr)
                found.push_back(each);
        return found;
    }
    std::vector<Entry> sorted = entries();
    std::stable_sort(sorted.begin(), sorted.end(),
                     [](Entry const & a, Entry const & b) { return a.number < b.number; });
    auto const end =
        std::unique(sorted.begin(), sorted.end(),
                    [](Entry const & a, Entry const & b) { return a.number == b.number; });
    found.assign(sorted.begin(), end);
    return found;
}

} // namespace transl_tk
