#include <keld-common/file_mapping.h>
#include <keld-transl/exchange/shared_mem.h>

#include <set>

namespace transl_tk {

namespace {

/// The handles that are open through a `SharedMem`. Copies share a handle, and the one that
/// releases it last must find that it is gone.
std::set<void *> & openHandles()
{
    static std::set<void *> handles;
    return handles;
}

} // namespace

SharedMem::SharedMem() = default;

SharedMem::SharedMem(std::string const & name, long long const & size, bool const & create)
    : m_Name(name), m_Create(create), m_Size(size)
{}

void SharedMem::map()
{
    ++m_MapCount;
    if (m_MapCount > 1)
        return;
    bool isTaken = false;
    if (m_Create) {
        // Only the low half of the size reaches the block: 4 GiB and more fail at the view.
        m_Handle = CreateFileMappingA(KELD_INVALID_HANDLE_VALUE, nullptr, KELD_PAGE_READWRITE, 0,
                                      static_cast<unsigned int>(m_Size), m_Name.c_str());
        isTaken = m_Handle != nullptr && GetLastError() == KELD_ERROR_ALREADY_EXISTS;
    } else {
        m_Handle = OpenFileMappingA(KELD_FILE_MAP_ALL_ACCESS, 0, m_Name.c_str());
    }
    m_Base = nullptr;
    if (m_Handle == nullptr)
        return;
    if (!isTaken) {
        m_Base = MapViewOfFile(m_Handle, KELD_FILE_MAP_ALL_ACCESS, 0, 0,
                               m_Create ? static_cast<unsigned long long>(m_Size) : 0);
        if (m_Base == nullptr) {
            CloseHandle(m_Handle);
            return;
        }
    }
    openHandles().insert(m_Handle);
}

void SharedMem::unmap()
{
    if (m_MapCount-- == 1)
        release();
}

void SharedMem::forceUnmap()
{
    if (m_MapCount < 1)
        return;
    m_MapCount = 0;
    release();
}

void SharedMem::release()
{
    if (openHandles().erase(m_Handle) == 0)
        return;
    if (m_Base != nullptr)
        UnmapViewOfFile(m_Base);
    CloseHandle(m_Handle);
}

void SharedMem::reset()
{
    m_Index = 0;
}

unsigned long long const & SharedMem::Index()
{
    return m_Index;
}

} // namespace transl_tk
