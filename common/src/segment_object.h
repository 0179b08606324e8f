#ifndef KELD_COMMON_SEGMENT_OBJECT_H
#define KELD_COMMON_SEGMENT_OBJECT_H

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <sys/types.h>

namespace keld_common {

/// Name of the shared-memory object for a segment's name: "keld-", then the text with every
/// character outside [A-Za-z0-9._-] as %XX. A name that would be too long for the platform is cut
/// and ends in a hash of the whole text, so that different texts keep different names.
std::string objectName(std::string_view text);

/// One process's hold on a named object of shared memory.
///
/// Every holder keeps a shared lock on the object from before the object has its name until it lets
/// go. The kernel drops the lock with the process, however that ends; so an exclusive lock can be
/// had exactly when no holder is left, and then the name is removed by whoever finds that out:
/// normally the last holder as it lets go.
class SegmentObject
{
public:
    enum class Outcome { Created, Existed, Failed };

    struct Creation
    {
        Outcome m_Outcome = Outcome::Failed;
        std::unique_ptr<SegmentObject> m_Object;
        int m_Error = 0; // an errno
    };

    /// Creates an object of `size` bytes with all its memory reserved, or holds the living one of
    /// that name. Gives back the memory of dead objects of any name first.
    static Creation create(std::string_view text, off_t size);

    /// Holds the living object of that name; Failed with ENOENT where there is none.
    static Creation open(std::string_view text);

    ~SegmentObject();
    SegmentObject(SegmentObject const &) = delete;
    SegmentObject & operator=(SegmentObject const &) = delete;

    /// The size at this moment, -1 once the object was let go.
    off_t size() const;

    /// Maps the first `size` bytes; null, with errno set, on failure.
    void * map(size_t size) const;

    /// Drops the lock, and removes the name when this was the last holder. Mappings stay.
    void letGo();

private:
    explicit SegmentObject(std::string path);

    static void removeDead();
    static std::unique_ptr<SegmentObject> attach(std::string const & path, int & error);
    static std::unique_ptr<SegmentObject> reserve(std::string const & path, off_t size,
                                                  int & error);

    bool hasName() const;

    std::string m_Path;
    int m_Descriptor = -1;
    // A forked child shares the lock of its parent, and must not take it for its own.
    pid_t m_Process;
};

} // namespace keld_common

#endif
