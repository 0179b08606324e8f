#include "export/file_buffer.h"

#include <keld-translator-kit/translator.h>

namespace step {

constexpr std::size_t BufferSize = 1 << 20;

FileBuffer::FileBuffer(translator_kit::OutputFile & file) : m_File(file), m_Buffer(BufferSize)
{
    setp(m_Buffer.data(), m_Buffer.data() + m_Buffer.size());
}

void FileBuffer::finish()
{
    pass();
    if (m_Failure)
        std::rethrow_exception(m_Failure);
}

FileBuffer::int_type FileBuffer::overflow(int_type character)
{
    if (!pass())
        return traits_type::eof();
    if (!traits_type::eq_int_type(character, traits_type::eof()))
        sputc(traits_type::to_char_type(character));
    return traits_type::not_eof(character);
}

bool FileBuffer::pass()
{
    if (m_Failure)
        return false;
    try {
        m_File.write(pbase(), static_cast<std::size_t>(pptr() - pbase()));
    } catch (translator_kit::Failure const &) {
        m_Failure = std::current_exception();
    }
    setp(m_Buffer.data(), m_Buffer.data() + m_Buffer.size());
    return !m_Failure;
}

} // namespace step
