#include "model/block_pool.h"

#include <cstdint>
#include <cstdlib>
#include <new>

namespace transl_tk {

// Under AddressSanitizer every block is an allocation of its own, so that it sees each use after
// release.
#if defined(__SANITIZE_ADDRESS__)
#define KELD_POOLED_BLOCKS 0
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define KELD_POOLED_BLOCKS 0
#endif
#endif
#ifndef KELD_POOLED_BLOCKS
#define KELD_POOLED_BLOCKS 1
#endif

#if KELD_POOLED_BLOCKS

namespace {

constexpr std::size_t SlabAlignment = 64UL * 1024;
/// A little less than the alignment leaves room for the allocator's own header, so that slabs
/// stand back to back.
constexpr std::size_t SlabSize = SlabAlignment - 64;

} // namespace

/// Head of a slab; the blocks follow. It is found from a block by the slab's alignment.
struct BlockPool::Slab
{
    Slab * previous;
    Slab * next;
    void * released;    ///< chain of blocks that have come back
    std::uint32_t live; ///< blocks in use
    std::uint32_t cut;  ///< offset of the first block that was never given out

    static Slab * of(void * block)
    {
        return reinterpret_cast<Slab *>(reinterpret_cast<std::uintptr_t>(block) &
                                        ~(SlabAlignment - 1));
    }

    bool full(std::size_t blockSize) const
    {
        return released == nullptr && cut + blockSize > SlabSize;
    }
};

void BlockPool::link(Slab * slab) noexcept
{
    slab->previous = nullptr;
    slab->next = m_Usable;
    if (m_Usable != nullptr)
        m_Usable->previous = slab;
    m_Usable = slab;
}

void BlockPool::unlink(Slab * slab) noexcept
{
    if (slab->previous != nullptr)
        slab->previous->next = slab->next;
    else
        m_Usable = slab->next;
    if (slab->next != nullptr)
        slab->next->previous = slab->previous;
}

void * BlockPool::allocate()
{
    if (m_Usable == nullptr) {
        void * memory = nullptr;
        if (::posix_memalign(&memory, SlabAlignment, SlabSize) != 0)
            throw std::bad_alloc();
        link(new (memory) Slab{nullptr, nullptr, nullptr, 0, sizeof(Slab)});
    }
    Slab * const slab = m_Usable;
    void * block = slab->released;
    if (block != nullptr) {
        slab->released = *static_cast<void **>(block);
    } else {
        block = reinterpret_cast<char *>(slab) + slab->cut;
        slab->cut += static_cast<std::uint32_t>(m_BlockSize);
    }
    ++slab->live;
    if (slab->full(m_BlockSize))
        unlink(slab);
    return block;
}

void BlockPool::release(void * block) noexcept
{
    Slab * const slab = Slab::of(block);
    if (slab->full(m_BlockSize))
        link(slab);
    *static_cast<void **>(block) = slab->released;
    slab->released = block;
    --slab->live;
    if (slab->live == 0 && (slab->previous != nullptr || slab->next != nullptr)) {
        unlink(slab);
        std::free(slab);
    }
}

#else

void * BlockPool::allocate()
{
    return ::operator new(m_BlockSize);
}

void BlockPool::release(void * block) noexcept
{
    ::operator delete(block);
}

#endif

} // namespace transl_tk
