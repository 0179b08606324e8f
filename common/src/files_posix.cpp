#include <keld-common/files.h>

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <libxml/encoding.h>
#include <libxml/tree.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

std::atomic<int> s_DatabaseStorage = 0;

bool isUsableDirectory(char const * path)
{
    struct stat status = {};
    return path != nullptr && *path != '\0' && ::stat(path, &status) == 0 &&
           S_ISDIR(status.st_mode) && ::faccessat(AT_FDCWD, path, W_OK | X_OK, AT_EACCESS) == 0;
}

char * withSeparator(char const * directory)
{
    size_t const length = std::strlen(directory);
    bool const missing = directory[length - 1] != '/';
    char * const text = static_cast<char *>(std::malloc(length + 2));
    if (text == nullptr)
        return nullptr;
    std::memcpy(text, directory, length + 1);
    if (missing)
        std::memcpy(text + length, "/", 2);
    return text;
}

/// Removes a file or a link; anything else is no leftover of an earlier run and stays.
bool removeStaleFile(char const * path)
{
    struct stat status = {};
    if (::lstat(path, &status) == -1)
        return errno == ENOENT;
    if (!S_ISREG(status.st_mode) && !S_ISLNK(status.st_mode)) {
        errno = EEXIST;
        return false;
    }
    return ::unlink(path) == 0 || errno == ENOENT;
}

bool writeAll(int descriptor, unsigned char const * bytes, size_t size)
{
    while (size > 0) {
        ssize_t const written = ::write(descriptor, bytes, size);
        if (written == -1 && errno == EINTR)
            continue;
        if (written == -1)
            return false;
        bytes += written;
        size -= static_cast<size_t>(written);
    }
    return true;
}

/// Asked ahead: the dump itself prints to standard error when it does not know the encoding.
bool isKnownEncoding(char const * encoding)
{
    if (encoding == nullptr)
        return true;
    xmlCharEncodingHandler * const handler = xmlFindCharEncodingHandler(encoding);
    if (handler == nullptr)
        return false;
    xmlCharEncCloseFunc(handler);
    return true;
}

bool createPrivateFile(char const * path, unsigned char const * bytes, size_t size)
{
    if (!removeStaleFile(path))
        return false;
    int const descriptor =
        ::open(path, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, S_IRUSR | S_IWUSR);
    if (descriptor == -1)
        return false;
    // The umask of the process may have taken bits away.
    bool good = ::fchmod(descriptor, S_IRUSR | S_IWUSR) == 0 && writeAll(descriptor, bytes, size);
    int reason = errno;
    if (::close(descriptor) == -1 && good && errno != EINTR) {
        good = false;
        reason = errno;
    }
    if (!good)
        ::unlink(path);
    errno = reason;
    return good;
}

} // namespace

char * getenv_utf8(char const * name)
{
    char const * const value = name == nullptr ? nullptr : std::getenv(name);
    return value == nullptr ? nullptr : ::strdup(value);
}

int envexists_utf8(char const * name)
{
    return name != nullptr && std::getenv(name) != nullptr ? 1 : 0;
}

int iaccess(char const * path, char const * mode)
{
    if (path == nullptr || mode == nullptr) {
        errno = EINVAL;
        return -1;
    }
    int wanted = F_OK;
    for (; *mode != '\0'; ++mode) {
        switch (*mode) {
        case 'e':
            break;
        case 'r':
            wanted |= R_OK;
            break;
        case 'w':
            wanted |= W_OK;
            break;
        case 'x':
            wanted |= X_OK;
            break;
        default:
            errno = EINVAL;
            return -1;
        }
    }
    return ::faccessat(AT_FDCWD, path, wanted, AT_EACCESS);
}

char * get_tmp_dir(void)
{
    for (char const * name : {"TMP", "TMPDIR", "TEMP", "TEMPDIR"}) {
        char const * const value = std::getenv(name);
        if (isUsableDirectory(value))
            return withSeparator(value);
    }
    if (isUsableDirectory("/tmp"))
        return withSeparator("/tmp");
    for (char const * name : {"HOME", "PWD"}) {
        char const * const value = std::getenv(name);
        if (isUsableDirectory(value))
            return withSeparator(value);
    }
    return nullptr;
}

int unlink_utf8(char const * path)
{
    if (path == nullptr) {
        errno = EINVAL;
        return -1;
    }
    return ::unlink(path);
}

void towin_path(char *) {}

int getCurrentProcessId(void)
{
    return ::getpid();
}

int xmlSaveFormatFileEnc_utf8(char const * path, _xmlDoc * document, char const * encoding,
                              int format)
{
    if (path == nullptr || document == nullptr || !isKnownEncoding(encoding)) {
        errno = EINVAL;
        return -1;
    }
    xmlChar * text = nullptr;
    int size = 0;
    xmlDocDumpFormatMemoryEnc(document, &text, &size, encoding, format);
    if (text == nullptr || size < 0) {
        xmlFree(text);
        errno = EINVAL;
        return -1;
    }
    bool const saved = createPrivateFile(path, text, static_cast<size_t>(size));
    int const reason = errno;
    xmlFree(text);
    errno = reason;
    return saved ? size : -1;
}

int vstudio_printf(char const * format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    int const written = std::vprintf(format, arguments);
    va_end(arguments);
    return written;
}

int enableDatabaseStorage(void)
{
    return s_DatabaseStorage;
}

void setDatabaseStorage(int enabled)
{
    s_DatabaseStorage = enabled;
}
