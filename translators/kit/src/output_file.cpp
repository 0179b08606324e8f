#include <keld-translator-kit/output_file.h>
#include <keld-translator-kit/translator.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <memory>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace translator_kit {

namespace {

constexpr mode_t DefaultMode = 0666; // less the umask

/// `path` behind all links; as it stands when it names nothing yet.
std::string targetOf(std::string const & path)
{
    std::unique_ptr<char, void (*)(void *)> const real(realpath(path.c_str(), nullptr), std::free);
    return real ? real.get() : path;
}

std::string directoryOf(std::string const & path)
{
    std::size_t const slash = path.rfind('/');
    if (slash == std::string::npos)
        return ".";
    return slash == 0 ? "/" : path.substr(0, slash);
}

std::string linkOf(int fd)
{
    return "/proc/self/fd/" + std::to_string(fd);
}

} // namespace

OutputFile::OutputFile(std::string const & path) : m_Path(path), m_Target(targetOf(path))
{
    struct stat old = {};
    bool const replaces = stat(m_Target.c_str(), &old) == 0;
    if (replaces && S_ISDIR(old.st_mode))
        fail(EISDIR);
    if (replaces && !S_ISREG(old.st_mode))
        throw Failure(Reason::ExportFailed, "Cannot write " + m_Path + ": it is no regular file.");
    if (replaces && access(m_Target.c_str(), W_OK) != 0)
        fail(errno);

    open();
    if (replaces)
        fchmod(m_Fd, old.st_mode & 07777);
}

OutputFile::~OutputFile()
{
    if (m_Fd >= 0)
        close(m_Fd);
    if (!m_TemporaryName.empty())
        unlink(m_TemporaryName.c_str());
}

void OutputFile::open()
{
    m_Fd = ::open(directoryOf(m_Target).c_str(), O_TMPFILE | O_WRONLY | O_CLOEXEC, DefaultMode);
    if (m_Fd >= 0 && access(linkOf(m_Fd).c_str(), F_OK) == 0)
        return;
    if (m_Fd < 0 && errno != EOPNOTSUPP && errno != EISDIR && errno != EINVAL)
        fail(errno);

    if (m_Fd >= 0)
        close(m_Fd);
    std::string const name = m_Target + "." + std::to_string(getpid()) + ".part";
    m_Fd = ::open(name.c_str(), O_CREAT | O_EXCL | O_WRONLY | O_CLOEXEC, DefaultMode);
    if (m_Fd < 0)
        fail(errno);
    m_TemporaryName = name;
}

void OutputFile::write(char const * bytes, std::size_t size)
{
    while (size > 0) {
        ssize_t const written = ::write(m_Fd, bytes, size);
        if (written < 0 && errno != EINTR)
            fail(errno);
        if (written > 0) {
            bytes += written;
            size -= static_cast<std::size_t>(written);
        }
    }
}

std::string OutputFile::readingPath() const
{
    return m_TemporaryName.empty() ? linkOf(m_Fd) : m_TemporaryName;
}

void OutputFile::commit()
{
    if (fsync(m_Fd) != 0)
        fail(errno);
    if (m_TemporaryName.empty()) {
        // A link cannot take the place of a file, so the new file gets a name for a moment first.
        std::string const name = m_Target + "." + std::to_string(getpid()) + ".part";
        if (linkat(AT_FDCWD, linkOf(m_Fd).c_str(), AT_FDCWD, name.c_str(), AT_SYMLINK_FOLLOW) != 0)
            fail(errno);
        m_TemporaryName = name;
    }
    if (rename(m_TemporaryName.c_str(), m_Target.c_str()) != 0)
        fail(errno);
    m_TemporaryName.clear();
}

void OutputFile::fail(int error) const
{
    throw Failure(Reason::ExportFailed,
                  "Cannot write " + m_Path + ": " + std::generic_category().message(error) + ".");
}

} // namespace translator_kit
