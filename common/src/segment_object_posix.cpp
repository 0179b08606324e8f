#include "segment_object.h"

#include <cerrno>
#include <csignal>
#include <cstdint>
#include <dirent.h>
#include <fcntl.h>
#include <poll.h>
#include <sys/file.h>
#include <sys/mman.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>
#include <utility>

namespace keld_common {

namespace {

constexpr char s_Directory[] = "/dev/shm";
constexpr char s_Prefix[] = "keld-";
constexpr size_t s_MaxName = 255;

// How often a name is looked at again when another process creates or removes it at that moment,
// with a millisecond in between. A process that is stopped there makes the call fail, not hang.
constexpr int s_Attempts = 2000;

std::uint64_t hash(std::string_view text, std::uint64_t basis)
{
    // FNV-1a, 64 bits.
    for (char character : text)
        basis = (basis ^ static_cast<unsigned char>(character)) * 0x100000001B3u;
    return basis;
}

void appendHexadecimal(std::string & text, std::uint64_t number, int digits)
{
    for (int shift = 4 * (digits - 1); shift >= 0; shift -= 4)
        text += "0123456789ABCDEF"[(number >> shift) & 0xF];
}

bool isPlain(char character)
{
    return (character >= 'A' && character <= 'Z') || (character >= 'a' && character <= 'z') ||
           (character >= '0' && character <= '9') || character == '.' || character == '_' ||
           character == '-';
}

void pauseBriefly()
{
    ::poll(nullptr, 0, 1);
}

/// Opens what may be an object of this user, or answers -1 with errno set.
int openObject(std::string const & path)
{
    int const descriptor = ::open(path.c_str(), O_RDWR | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK);
    if (descriptor == -1)
        return -1;
    struct stat status = {};
    if (::fstat(descriptor, &status) == 0 && S_ISREG(status.st_mode) &&
        status.st_uid == ::geteuid())
        return descriptor;
    ::close(descriptor);
    errno = EACCES;
    return -1;
}

/// A process that asks for a file above its own limit is sent SIGXFSZ, which would end it.
bool isWithinFileLimit(off_t size)
{
    rlimit limit = {};
    return ::getrlimit(RLIMIT_FSIZE, &limit) == -1 || limit.rlim_cur == RLIM_INFINITY ||
           static_cast<rlim_t>(size) <= limit.rlim_cur;
}

/// Answers 0 or an errno. Signals wait meanwhile: one that arrives makes the kernel give back what
/// it has reserved so far, and a timer that is quicker than the reservation would do so for ever.
int reserveMemory(int descriptor, off_t size)
{
    if (!isWithinFileLimit(size))
        return EFBIG;
    sigset_t all;
    sigset_t old;
    ::sigfillset(&all);
    ::pthread_sigmask(SIG_SETMASK, &all, &old);
    int error = 0;
    do {
        error = ::fallocate(descriptor, 0, 0, size) == 0 ? 0 : errno;
    } while (error == EINTR);
    ::pthread_sigmask(SIG_SETMASK, &old, nullptr);
    return error == ENOMEM ? ENOSPC : error;
}

} // namespace

std::string objectName(std::string_view text)
{
    std::string name = s_Prefix;
    for (char character : text) {
        if (isPlain(character)) {
            name += character;
        } else {
            name += '%';
            appendHexadecimal(name, static_cast<unsigned char>(character), 2);
        }
    }
    if (name.size() <= s_MaxName)
        return name;
    // No escaped character begins with "%-", so that no short name looks like a cut one.
    constexpr size_t tailSize = 2 + 2 * 16;
    name.resize(s_MaxName - tailSize);
    name += "%-";
    appendHexadecimal(name, hash(text, 0xCBF29CE484222325u), 16);
    appendHexadecimal(name, hash(text, 0x84222325CBF29CE4u), 16);
    return name;
}

SegmentObject::SegmentObject(std::string path) : m_Path(std::move(path)), m_Process(::getpid()) {}

SegmentObject::~SegmentObject()
{
    letGo();
}

/// Whether the name still leads to this object.
bool SegmentObject::hasName() const
{
    struct stat own = {};
    struct stat named = {};
    return ::fstat(m_Descriptor, &own) == 0 && ::lstat(m_Path.c_str(), &named) == 0 &&
           own.st_ino == named.st_ino && own.st_dev == named.st_dev;
}

/// Holds the living object at `path`. Null with ENOENT when there is none, after the name of a dead
/// one was removed; null with EAGAIN when the name is changing hands.
///
/// Why this is sound: an object gets its name only while its creator holds the shared lock (see
/// reserve), and a holder has checked the name after it had the lock. So whoever gets the exclusive
/// lock and then still finds the object under the name knows that all holders are gone, and that
/// nobody becomes one: a process that opens the object meanwhile does not get its lock, or finds
/// the name gone after it got it. A name is removed only under that lock, so that it always is the
/// name of the object that was looked at.
std::unique_ptr<SegmentObject> SegmentObject::attach(std::string const & path, int & error)
{
    std::unique_ptr<SegmentObject> object(new SegmentObject(path));
    object->m_Descriptor = openObject(path);
    int const descriptor = object->m_Descriptor;
    if (descriptor == -1) {
        error = errno;
        return nullptr;
    }
    bool const isDead = ::flock(descriptor, LOCK_EX | LOCK_NB) == 0;
    bool const isHeld = !isDead && ::flock(descriptor, LOCK_SH | LOCK_NB) == 0;
    bool const named = object->hasName();
    if (isHeld && named)
        return object;
    if (isDead && named)
        ::unlink(path.c_str());
    ::close(std::exchange(object->m_Descriptor, -1));
    error = isDead && named ? ENOENT : EAGAIN;
    return nullptr;
}

/// Removes the names of all objects whose holders are gone: a run that was killed leaves as much
/// memory behind as its model took, and its name may never be asked for again. Tries the exclusive
/// lock alone, since a shared one would keep a last holder from removing its name.
void SegmentObject::removeDead()
{
    DIR * const directory = ::opendir(s_Directory);
    if (directory == nullptr)
        return;
    while (dirent const * const entry = ::readdir(directory)) {
        if (!std::string_view(entry->d_name).starts_with(s_Prefix))
            continue;
        SegmentObject object(std::string(s_Directory) + "/" + entry->d_name);
        object.m_Descriptor = openObject(object.m_Path);
        if (object.m_Descriptor != -1)
            object.letGo();
    }
    ::closedir(directory);
}

/// Creates an object that has no name yet, with its lock and its memory.
std::unique_ptr<SegmentObject> SegmentObject::reserve(std::string const & path, off_t size,
                                                      int & error)
{
    std::unique_ptr<SegmentObject> object(new SegmentObject(path));
    object->m_Descriptor = ::open(s_Directory, O_TMPFILE | O_RDWR | O_CLOEXEC, S_IRUSR | S_IWUSR);
    int const descriptor = object->m_Descriptor;
    if (descriptor == -1) {
        error = errno;
        return nullptr;
    }
    error = reserveMemory(descriptor, size);
    // The umask of the process may have taken bits away.
    if (error == 0 && (::fchmod(descriptor, S_IRUSR | S_IWUSR) == -1 ||
                       ::flock(descriptor, LOCK_SH | LOCK_NB) == -1))
        error = errno;
    if (error != 0)
        object.reset();
    return object;
}

SegmentObject::Creation SegmentObject::create(std::string_view text, off_t size)
{
    removeDead();
    std::string const path = std::string(s_Directory) + "/" + objectName(text);
    std::unique_ptr<SegmentObject> created;
    int error = 0;
    for (int attempt = 0; attempt < s_Attempts; ++attempt) {
        if (auto existing = attach(path, error))
            return {Outcome::Existed, std::move(existing), 0};
        if (error == EAGAIN) {
            pauseBriefly();
            continue;
        }
        if (error != ENOENT)
            return {Outcome::Failed, nullptr, error};
        if (created == nullptr)
            created = reserve(path, size, error);
        if (created == nullptr)
            return {Outcome::Failed, nullptr, error};
        std::string const unnamed = "/proc/self/fd/" + std::to_string(created->m_Descriptor);
        if (::linkat(AT_FDCWD, unnamed.c_str(), AT_FDCWD, path.c_str(), AT_SYMLINK_FOLLOW) == 0)
            return {Outcome::Created, std::move(created), 0};
        error = errno;
        if (error != EEXIST)
            return {Outcome::Failed, nullptr, error};
    }
    return {Outcome::Failed, nullptr, error};
}

SegmentObject::Creation SegmentObject::open(std::string_view text)
{
    std::string const path = std::string(s_Directory) + "/" + objectName(text);
    int error = EAGAIN;
    for (int attempt = 0; attempt < s_Attempts && error == EAGAIN; ++attempt) {
        if (auto existing = attach(path, error))
            return {Outcome::Existed, std::move(existing), 0};
        if (error == EAGAIN)
            pauseBriefly();
    }
    return {Outcome::Failed, nullptr, error};
}

off_t SegmentObject::size() const
{
    struct stat status = {};
    return ::fstat(m_Descriptor, &status) == 0 ? status.st_size : -1;
}

void * SegmentObject::map(size_t size) const
{
    // Without MAP_POPULATE: filling the page table ahead costs more than the faults of one pass
    // over the memory, for a writer and a reader alike.
    void * const address =
        ::mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_SHARED, m_Descriptor, 0);
    return address == MAP_FAILED ? nullptr : address;
}

void SegmentObject::letGo()
{
    if (m_Descriptor == -1)
        return;
    // Asking for the exclusive lock gives the shared one up, whether it is granted or not. So of
    // two last holders that do this at once, one finds the other's lock gone.
    if (m_Process == ::getpid() && ::flock(m_Descriptor, LOCK_EX | LOCK_NB) == 0 && hasName())
        ::unlink(m_Path.c_str());
    ::close(std::exchange(m_Descriptor, -1));
}

} // namespace keld_common
