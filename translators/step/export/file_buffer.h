#ifndef KELD_STEP_EXPORT_FILE_BUFFER_H
#define KELD_STEP_EXPORT_FILE_BUFFER_H

#include <exception>
#include <streambuf>
#include <vector>

namespace translator_kit {
class OutputFile;
}

namespace step {

/// Brings what the kernel writes to a stream into a file. A failure of the file fails the stream,
/// and comes out of `finish`.
class FileBuffer : public std::streambuf
{
public:
    explicit FileBuffer(translator_kit::OutputFile & file);

    /// Passes on what is still here. Throws what went wrong at any time.
    void finish();

protected:
    int_type overflow(int_type character) override;

private:
    bool pass();

    translator_kit::OutputFile & m_File;
    std::vector<char> m_Buffer;
    std::exception_ptr m_Failure;
};

} // namespace step

#endif
