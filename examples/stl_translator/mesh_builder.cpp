#include "mesh_builder.h"

#include <algorithm>
#include <bit>

namespace stl {

namespace {

/// Corners whose slots, and then vertices, are fetched into the cache together.
constexpr std::size_t BlockSize = 96;
constexpr std::size_t FewestSlots = 2 * BlockSize;

int shiftFor(std::size_t slots)
{
    return 64 - std::countr_zero(slots);
}

} // namespace

MeshBuilder::MeshBuilder(std::size_t triangles)
    // A closed mesh has half as many vertices as triangles; less than half of the table is used.
    : m_Slots(std::bit_ceil(std::max(triangles, FewestSlots))), m_Shift(shiftFor(m_Slots.size()))
{
    m_Mesh.vertices.reserve(triangles / 2 + BlockSize);
    m_Mesh.indices.reserve(3 * triangles);
}

void MeshBuilder::add(Corner const * corners, std::size_t count)
{
    while (count > 0) {
        std::size_t const block = std::min(count, BlockSize);
        addBlock(corners, block);
        corners += block;
        count -= block;
    }
}

void MeshBuilder::addBlock(Corner const * corners, std::size_t count)
{
    if (3 * (m_Mesh.vertices.size() + count) > 2 * m_Slots.size())
        growTable();

    std::size_t slots[BlockSize];
    for (std::size_t i = 0; i < count; ++i) {
        slots[i] = slotOf(corners[i]);
        __builtin_prefetch(&m_Slots[slots[i]]);
    }
    for (std::size_t i = 0; i < count; ++i) {
        if (std::uint32_t const slot = m_Slots[slots[i]])
            __builtin_prefetch(&m_Mesh.vertices[slot - 1]);
    }

    std::size_t const mask = m_Slots.size() - 1;
    std::size_t const done = m_Mesh.indices.size();
    m_Mesh.indices.resize(done + count);
    for (std::size_t i = 0; i < count; ++i) {
        std::size_t slot = slots[i];
        while (m_Slots[slot] != 0 && m_Mesh.vertices[m_Slots[slot] - 1] != corners[i])
            slot = (slot + 1) & mask;
        if (m_Slots[slot] == 0) {
            m_Mesh.vertices.push_back(corners[i]);
            m_Slots[slot] = static_cast<std::uint32_t>(m_Mesh.vertices.size());
        }
        m_Mesh.indices[done + i] = static_cast<int>(m_Slots[slot] - 1);
    }
}

std::size_t MeshBuilder::slotOf(Corner const & corner) const
{
    std::uint64_t hash = corner.x | std::uint64_t{corner.y} << 32;
    hash *= 0x9E3779B97F4A7C15;
    hash ^= hash >> 32;
    hash ^= std::uint64_t{corner.z} << 32;
    hash *= 0xD6E8FEB86659FD93;
    hash ^= hash >> 32;
    hash *= 0xD6E8FEB86659FD93;
    return hash >> m_Shift;
}

void MeshBuilder::growTable()
{
    std::size_t const size = 2 * m_Slots.size();
    m_Slots = {}; // gone before the larger one comes
    m_Slots.resize(size);
    m_Shift = shiftFor(size);
    for (std::size_t vertex = 0; vertex < m_Mesh.vertices.size(); ++vertex) {
        std::size_t slot = slotOf(m_Mesh.vertices[vertex]);
        while (m_Slots[slot] != 0)
            slot = (slot + 1) & (size - 1);
        m_Slots[slot] = static_cast<std::uint32_t>(vertex + 1);
    }
}

} // namespace stl
