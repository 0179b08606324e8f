#include <keld-translator-kit/input_file.h>
#include <keld-translator-kit/translator.h>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace translator_kit {

InputFile::InputFile(std::string const & path) : m_Path(path)
{
    // A pipe under that name must not block the opening.
    m_Fd = open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC);
    struct stat status = {};
    if (m_Fd < 0 || fstat(m_Fd, &status) != 0)
        fail(errno);
    if (!S_ISREG(status.st_mode)) {
        close(m_Fd);
        if (S_ISDIR(status.st_mode))
            fail(EISDIR);
        throw Failure(Reason::Failed, "Cannot read " + path + ": it is no regular file.");
    }
    m_Size = status.st_size;
}

InputFile::~InputFile()
{
    close(m_Fd);
}

std::size_t InputFile::read(char * bytes, std::size_t size)
{
    std::size_t done = 0;
    while (done < size) {
        ssize_t const count = ::read(m_Fd, bytes + done, size - done);
        if (count == 0)
            break;
        if (count < 0 && errno != EINTR)
            fail(errno);
        if (count > 0)
            done += static_cast<std::size_t>(count);
    }
    return done;
}

void InputFile::seek(long long position)
{
    if (lseek(m_Fd, position, SEEK_SET) < 0)
        fail(errno);
}

void InputFile::fail(int error) const
{
    throw Failure(Reason::Failed,
                  "Cannot read " + m_Path + ": " + std::generic_category().message(error) + ".");
}

} // namespace translator_kit
