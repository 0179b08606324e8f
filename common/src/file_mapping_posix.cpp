#include "segment_object.h"

#include <keld-common/file_mapping.h>

#include <cerrno>
#include <cstdint>
#include <limits>
#include <map>
#include <memory>
#include <mutex>
#include <new>
#include <sys/mman.h>
#include <sys/statvfs.h>
#include <unistd.h>
#include <utility>

using keld_common::SegmentObject;

namespace {

thread_local unsigned int s_LastError = KELD_ERROR_SUCCESS;

struct View
{
    std::shared_ptr<SegmentObject> m_Object;
    size_t m_Size = 0;
};

/// What this process holds. An object is let go with the last of its handles and views.
struct Registry
{
    std::mutex m_Mutex;
    std::uintptr_t m_LastHandle = 0;
    std::map<std::uintptr_t, std::shared_ptr<SegmentObject>> m_Handles;
    std::map<void const *, View> m_Views;
};

/// Lets the names go at the regular end of the process, and not at that of a forked child. The
/// registry itself stays, since code that runs later may still release what it holds.
struct ReleaseAtExit
{
    pid_t m_Process = ::getpid();

    ~ReleaseAtExit()
    {
        if (m_Process == ::getpid())
            ReleaseFileMappings();
    }
};

Registry & registry()
{
    static Registry * const made = new Registry;
    return *made;
}

unsigned int errorOf(int reason)
{
    switch (reason) {
    case ENOENT:
        return KELD_ERROR_FILE_NOT_FOUND;
    case EACCES:
    case EPERM:
    case ELOOP:
    case EAGAIN:
    case EEXIST:
        return KELD_ERROR_ACCESS_DENIED;
    case ENOSPC:
    case EDQUOT:
    case EFBIG:
        return KELD_ERROR_DISK_FULL;
    case ENOMEM:
    case EMFILE:
    case ENFILE:
        return KELD_ERROR_NOT_ENOUGH_MEMORY;
    default:
        return KELD_ERROR_INVALID_PARAMETER;
    }
}

/// Runs the body of one call: what it answers is the call's answer, and running out of memory is a
/// failure.
template <class Answer, class Body> Answer guarded(Body body)
{
    s_LastError = KELD_ERROR_SUCCESS;
    try {
        return body();
    } catch (std::bad_alloc const &) {
        s_LastError = KELD_ERROR_NOT_ENOUGH_MEMORY;
        return Answer();
    }
}

template <class Answer = void *> Answer failWith(unsigned int error)
{
    s_LastError = error;
    return Answer();
}

void * newHandle(std::shared_ptr<SegmentObject> object)
{
    static ReleaseAtExit const release;
    Registry & known = registry();
    std::lock_guard const lock(known.m_Mutex);
    ++known.m_LastHandle;
    known.m_Handles.emplace(known.m_LastHandle, std::move(object));
    // A handle is a number that looks like an address; nothing ever follows it.
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    return reinterpret_cast<void *>(known.m_LastHandle);
}

std::shared_ptr<SegmentObject> objectOf(void * handle)
{
    Registry & known = registry();
    std::lock_guard const lock(known.m_Mutex);
    auto const found = known.m_Handles.find(reinterpret_cast<std::uintptr_t>(handle));
    return found == known.m_Handles.end() ? nullptr : found->second;
}

} // namespace

void * CreateFileMappingA(void * file, void * attributes, unsigned int protection,
                          unsigned int sizeHigh, unsigned int sizeLow, char const * name)
{
    return guarded<void *>([=]() -> void * {
        auto const size = (static_cast<unsigned long long>(sizeHigh) << 32) | sizeLow;
        if (reinterpret_cast<std::intptr_t>(file) != -1 || attributes != nullptr ||
            protection != KELD_PAGE_READWRITE || name == nullptr || size == 0)
            return failWith(KELD_ERROR_INVALID_PARAMETER);
        if (size > static_cast<unsigned long long>(std::numeric_limits<off_t>::max()))
            return failWith(KELD_ERROR_DISK_FULL);
        auto creation = SegmentObject::create(name, static_cast<off_t>(size));
        if (creation.m_Object == nullptr)
            return failWith(errorOf(creation.m_Error));
        if (creation.m_Outcome == SegmentObject::Outcome::Existed)
            s_LastError = KELD_ERROR_ALREADY_EXISTS;
        return newHandle(std::move(creation.m_Object));
    });
}

void * OpenFileMappingA(unsigned int access, int inherit, char const * name)
{
    return guarded<void *>([=]() -> void * {
        if (access != KELD_FILE_MAP_ALL_ACCESS || inherit != 0 || name == nullptr)
            return failWith(KELD_ERROR_INVALID_PARAMETER);
        auto opened = SegmentObject::open(name);
        if (opened.m_Object == nullptr)
            return failWith(errorOf(opened.m_Error));
        return newHandle(std::move(opened.m_Object));
    });
}

void * MapViewOfFile(void * handle, unsigned int access, unsigned int offsetHigh,
                     unsigned int offsetLow, unsigned long long size)
{
    return guarded<void *>([=]() -> void * {
        if (access != KELD_FILE_MAP_ALL_ACCESS || offsetHigh != 0 || offsetLow != 0)
            return failWith(KELD_ERROR_INVALID_PARAMETER);
        auto object = objectOf(handle);
        if (object == nullptr)
            return failWith(KELD_ERROR_INVALID_HANDLE);
        off_t const whole = object->size();
        if (whole <= 0 || size > static_cast<unsigned long long>(whole))
            return failWith(KELD_ERROR_ACCESS_DENIED);
        View view{std::move(object), size == 0 ? static_cast<size_t>(whole) : size};
        void * const address = view.m_Object->map(view.m_Size);
        if (address == nullptr)
            return failWith(errorOf(errno));
        size_t const mapped = view.m_Size;
        Registry & known = registry();
        std::lock_guard const lock(known.m_Mutex);
        try {
            known.m_Views.emplace(address, std::move(view));
        } catch (std::bad_alloc const &) {
            ::munmap(address, mapped);
            throw;
        }
        return address;
    });
}

int UnmapViewOfFile(void const * address)
{
    return guarded<int>([=] {
        Registry & known = registry();
        std::lock_guard const lock(known.m_Mutex);
        auto const released = known.m_Views.extract(address);
        if (released.empty())
            return failWith<int>(KELD_ERROR_INVALID_PARAMETER);
        ::munmap(const_cast<void *>(address), released.mapped().m_Size);
        return 1;
    });
}

int CloseHandle(void * handle)
{
    return guarded<int>([=] {
        Registry & known = registry();
        std::lock_guard const lock(known.m_Mutex);
        auto const released = known.m_Handles.extract(reinterpret_cast<std::uintptr_t>(handle));
        return released.empty() ? failWith<int>(KELD_ERROR_INVALID_HANDLE) : 1;
    });
}

unsigned int GetLastError(void)
{
    return s_LastError;
}

long long FileMappingSize(void * handle)
{
    auto const object = objectOf(handle);
    return object == nullptr ? -1 : object->size();
}

long long FileMappingFree(void)
{
    struct statvfs status = {};
    if (::statvfs("/dev/shm", &status) == -1)
        return 0;
    // A file system without a limit counts no blocks.
    if (status.f_blocks == 0)
        return std::numeric_limits<long long>::max();
    return static_cast<long long>(status.f_bavail) * static_cast<long long>(status.f_frsize);
}

void PrepareViewOfFile(void const * address, unsigned long long size, int forWriting)
{
#ifdef MADV_POPULATE_WRITE
    constexpr std::uintptr_t Page = 4096;
    auto const offset = reinterpret_cast<std::uintptr_t>(address) % Page;
    ::madvise(static_cast<char *>(const_cast<void *>(address)) - offset, size + offset,
              forWriting != 0 ? MADV_POPULATE_WRITE : MADV_POPULATE_READ);
#else
    (void)address;
    (void)size;
    (void)forWriting;
#endif
}

void ReleaseFileMappings(void)
{
    Registry & known = registry();
    std::lock_guard const lock(known.m_Mutex);
    for (auto const & [handle, object] : known.m_Handles)
        object->letGo();
    for (auto const & [address, view] : known.m_Views)
        view.m_Object->letGo();
    known.m_Handles.clear();
}
