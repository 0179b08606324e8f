#ifndef KELD_TRANSL_MODEL_BLOCK_POOL_H
#define KELD_TRANSL_MODEL_BLOCK_POOL_H

#include <cstddef>

namespace transl_tk {

/// Memory for many objects of one size, for the thread that owns the model.
///
/// Blocks are cut from slabs, neighbours one after the other, so that objects made in a row lie in
/// a row. A slab whose blocks have all come back returns to the system, but for one.
class BlockPool
{
public:
    explicit constexpr BlockPool(std::size_t blockSize) noexcept
        : m_BlockSize(blockSize < sizeof(void *) ? sizeof(void *) : blockSize)
    {}

    void * allocate();
    void release(void * block) noexcept;

private:
    struct Slab;

    void link(Slab * slab) noexcept;
    void unlink(Slab * slab) noexcept;

    std::size_t m_BlockSize;
    Slab * m_Usable = nullptr; ///< slabs with room, the one in use first
};

/// Gives the objects of `Class`, a hidden implementation class, memory from a pool of their own.
template <class Class> class Pooled
{
public:
    static void * operator new(std::size_t) { return pool().allocate(); }
    static void operator delete(void * block) noexcept { pool().release(block); }

private:
    static BlockPool & pool()
    {
        static constinit BlockPool blocks(sizeof(Class));
        return blocks;
    }
};

} // namespace transl_tk

#endif
