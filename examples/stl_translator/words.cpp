#include "words.h"

#include <algorithm>
#include <cstring>

namespace stl {

namespace {

constexpr std::size_t BufferSize = 1 << 20;

bool isLineEnd(char c)
{
    return c == '\n' || c == '\r';
}

bool isBlank(char c)
{
    return c == ' ' || (c >= '\t' && c <= '\r');
}

char lowerCase(char c)
{
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

Words::Words(translator_kit::InputFile & file)
    : m_File(file), m_Buffer(BufferSize), m_Word(m_Buffer.data()), m_Next(m_Word), m_End(m_Word)
{}

bool Words::next()
{
    for (;; ++m_Next) {
        m_Word = m_Next;
        if (m_Next == m_End && !fill())
            return false;
        if (!isBlank(*m_Next))
            break;
        passBlank(*m_Next);
    }
    m_Return = false;
    m_Word = m_Next;
    do {
        m_Next = std::find_if(m_Next, m_End, isBlank);
    } while (m_Next == m_End && fill());
    return true;
}

bool Words::is(std::string_view keyword) const
{
    std::string_view const text = word();
    return std::equal(text.begin(), text.end(), keyword.begin(), keyword.end(),
                      [](char a, char b) { return lowerCase(a) == b; });
}

std::string Words::restOfLine()
{
    std::string rest;
    do {
        char const * const end = std::find_if(m_Next, m_End, isLineEnd);
        rest.append(m_Next, end);
        m_Word = m_Next = end;
    } while (m_Next == m_End && fill());
    rest.erase(std::find_if_not(rest.rbegin(), rest.rend(), isBlank).base(), rest.end());
    rest.erase(rest.begin(), std::find_if_not(rest.begin(), rest.end(), isBlank));
    return rest;
}

/// Reads more behind what has been read of the current word. False when nothing comes: at the end
/// of the file, or because the word fills the buffer.
bool Words::fill()
{
    auto const kept = static_cast<std::size_t>(m_End - m_Word);
    std::memmove(m_Buffer.data(), m_Word, kept);
    std::size_t const count = m_File.read(m_Buffer.data() + kept, m_Buffer.size() - kept);
    m_Word = m_Buffer.data();
    m_Next = m_Word + kept;
    m_End = m_Next + count;
    m_Bytes += static_cast<long long>(count);
    return count > 0;
}

/// Counts lines that end in a line feed, a carriage return, or both.
void Words::passBlank(char c)
{
    if (c == '\r' || (c == '\n' && !m_Return))
        ++m_Line;
    m_Return = c == '\r';
}

} // namespace stl
