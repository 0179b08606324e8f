#ifndef KELD_EXAMPLES_WORDS_H
#define KELD_EXAMPLES_WORDS_H

#include <keld-translator-kit/input_file.h>

#include <string>
#include <string_view>
#include <vector>

namespace stl {

/// The words of a text file, which are divided by blanks and line ends of any kind.
class Words
{
public:
    /// Reads on in `file` from where it stands.
    explicit Words(translator_kit::InputFile & file);

    /// Goes to the next word. False at the end of the file.
    bool next();

    /// The word, until the next call of any other operation; one that is longer than a mebibyte
    /// comes in pieces.
    std::string_view word() const { return {m_Word, static_cast<std::size_t>(m_Next - m_Word)}; }

    /// Whether the word is `keyword`, which is in lower case, in any case.
    bool is(std::string_view keyword) const;

    /// Passes over the rest of the line behind the word and returns it without the blanks around.
    std::string restOfLine();

    /// The line of the word, from 1 on; behind the last word, that of the end.
    long long line() const { return m_Line; }

    /// Bytes that were read so far.
    long long bytes() const { return m_Bytes; }

private:
    bool fill();
    void passBlank(char c);

    translator_kit::InputFile & m_File;
    std::vector<char> m_Buffer;
    char const * m_Word;
    char const * m_Next; ///< behind the word
    char const * m_End;
    long long m_Line = 1;
    long long m_Bytes = 0;
    bool m_Return = false; ///< the last character was a carriage return
};

} // namespace stl

#endif
