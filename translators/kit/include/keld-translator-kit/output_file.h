#ifndef KELD_TRANSLATOR_KIT_OUTPUT_FILE_H
#define KELD_TRANSLATOR_KIT_OUTPUT_FILE_H

#include <cstddef>
#include <string>

namespace translator_kit {

/// A file that appears under its name only when it is complete.
///
/// The bytes go to a file without a name in the target's directory, which takes the target's place
/// at `commit`. Until then, and when the process dies, what stood under the name stays as it was,
/// and nothing else is left. (On a file system without nameless files the bytes go to
/// "<target>.<process id>.part", which a process that dies leaves behind.) A target that is a
/// symbolic link stays one: the file that it names is replaced. A replaced file's permissions are
/// kept.
///
/// Every operation throws `Failure` with `Reason::ExportFailed` and a sentence that names the file.
class OutputFile
{
public:
    explicit OutputFile(std::string const & path);
    OutputFile(OutputFile const &) = delete;
    OutputFile & operator=(OutputFile const &) = delete;

    /// Drops the file unless it was committed.
    ~OutputFile();

    void write(char const * bytes, std::size_t size);

    /// A path under which this process can read what was written so far, until `commit`.
    std::string readingPath() const;

    /// Puts the file on the disk and under its name.
    void commit();

private:
    void open();
    [[noreturn]] void fail(int error) const;

    std::string m_Path;          ///< as the caller named it
    std::string m_Target;        ///< where it goes, behind all links
    std::string m_TemporaryName; ///< empty while the file has no name
    int m_Fd = -1;
};

} // namespace translator_kit

#endif
