#ifndef KELD_TRANSLATOR_KIT_INPUT_FILE_H
#define KELD_TRANSLATOR_KIT_INPUT_FILE_H

#include <cstddef>
#include <string>

namespace translator_kit {

/// A regular file to be read. A directory, a pipe or a device under the name is refused, without
/// waiting for anybody.
///
/// Every operation throws `Failure` with `Reason::Failed` and a sentence that names the file.
class InputFile
{
public:
    explicit InputFile(std::string const & path);
    InputFile(InputFile const &) = delete;
    InputFile & operator=(InputFile const &) = delete;
    ~InputFile();

    /// Bytes in the file when it was opened.
    long long size() const { return m_Size; }

    /// Reads on from where the last call ended. Returns how many bytes came: fewer than `size` only
    /// at the end of the file.
    std::size_t read(char * bytes, std::size_t size);

    /// Has the next call read from `position`, counted from the start of the file.
    void seek(long long position);

private:
    [[noreturn]] void fail(int error) const;

    std::string m_Path;
    int m_Fd = -1;
    long long m_Size = 0;
};

} // namespace translator_kit

#endif
