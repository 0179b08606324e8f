#ifndef KELD_TRANSL_EXCHANGE_SHARED_MEM_H
#define KELD_TRANSL_EXCHANGE_SHARED_MEM_H

#include <keld-transl/export.h>

#include <string>

namespace transl_tk {

/// One named block of memory through which a model goes from one process to another, with a byte
/// cursor.
///
/// The writing side creates the block at its exact size, the reading side opens it. Nothing here
/// reports an error: a mapping that failed leaves `m_Base` null. The destructor releases nothing;
/// `unmap` and `forceUnmap` do. Copies share one mapping, which any of them can release.
class KELD_TRANSL_EXPORT SharedMem
{
    SharedMem();

public:
    /// Names a block of `size` bytes that `map` creates or, with `create` false, opens.
    SharedMem(std::string const & name, long long const & size, bool const & create);
    SharedMem(SharedMem const &) = default;
    SharedMem & operator=(SharedMem const &) = default;
    ~SharedMem() = default;

    /// Creates or opens the block and maps it. Calls nest: only the first goes to the platform.
    void map();

    /// Undoes one `map`; the last one releases view and block.
    void unmap();

    /// Undoes all of them at once.
    void forceUnmap();

    /// Puts the cursor to the block's first byte.
    void reset();

    /// The cursor: offset in bytes from `m_Base`.
    unsigned long long const & Index();

    std::string m_Name;
    int m_MapCount = 0;      ///< `map` calls that are not undone; says nothing of success
    void * m_Base = nullptr; ///< first byte of the view
    unsigned long long m_Index = 0;
    bool m_Create = false;
    long long m_Size = 0;      ///< bytes that the block is created with
    void * m_Handle = nullptr; ///< the platform's handle

private:
    void release();
};

} // namespace transl_tk

#endif
