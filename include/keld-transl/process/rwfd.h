#ifndef KELD_TRANSL_PROCESS_RWFD_H
#define KELD_TRANSL_PROCESS_RWFD_H

#include <keld-transl/export.h>

#include <memory>
#include <string>

namespace transl_tk {

/// The keys of the frames that a translator sends to its host.
enum FrameKey : int {
    FrameSuccess = 120,          ///< import: 8-byte model size; export: 4-byte status
    FrameProgress = 121,         ///< 4-byte percent
    FrameExit = 122,             ///< 4-byte status; on import, unless it is 5, an 8-byte size
    FrameFileNameAccepted = 123, ///< no values
    FrameSkip = 124,             ///< no values: a sign of life that no handler sees
    FrameEnd = 126,              ///< no values: ends the conversation
    FrameStatus = 127            ///< 4-byte status word
};

/// Writes frames to a file descriptor and reads text commands from one.
///
/// A frame is a length of two bytes, least significant first, then a key byte and the values,
/// packed, least significant byte first. A record is begun with `setKey`, filled with the append
/// operations up to 4095 bytes, and sent with `write_fd`. The descriptor stays the caller's. Copies
/// share the record under construction.
class KELD_TRANSL_EXPORT RWFD
{
    RWFD();

public:
    explicit RWFD(int const & fd);
    RWFD(RWFD const &);
    RWFD & operator=(RWFD const &);
    ~RWFD();

    /// Begins a record with the low byte of `key`.
    void setKey(int const & key);

    /// Append a value. One that would not fit any more is left out.
    void appendInt(int const & value);
    void appendInt64(long long const & value);
    void appendFloat(float const & value);
    void appendDouble(double const & value);

    /// Sends the record as one frame, in one write; the record stays. A failure is not reported.
    void write_fd();

    /// Waits for input and sets `text` to what one read of at most 4096 bytes brought, up to its
    /// first zero byte; a short read after a longer one has the older bytes behind it. Leaves
    /// `text` as it is at the end of input.
    void read_fd(std::string & text);

    /// The text up to its first line feed.
    static std::string readLine(char const * text);

private:
    struct Blocks;

    int m_Fd;
    int m_Length;
    std::shared_ptr<Blocks> m_Blocks;
};

} // namespace transl_tk

#endif
