#include "view/base64.h"

namespace keld::view {

namespace {

constexpr std::size_t LineBytes = 90; ///< 120 characters
constexpr std::size_t BlockBytes = LineBytes * 700;

/// Three bytes at most as four characters.
void append(std::string & text, std::string_view bytes)
{
    constexpr char Digits[] = "ABCDEFGHIJKLMNOPQRSTUVWXYZabcdefghijklmnopqrstuvwxyz0123456789+/";
    unsigned bits = 0;
    for (std::size_t i = 0; i < 3; ++i)
        bits = bits << 8 | (i < bytes.size() ? static_cast<unsigned char>(bytes[i]) : 0U);
    for (std::size_t i = 0; i < 4; ++i)
        text += i <= bytes.size() ? Digits[(bits >> (18 - 6 * i)) & 63U] : '=';
}

} // namespace

Base64::Base64(Sink sink) : m_Sink(std::move(sink))
{
    m_Bytes.reserve(BlockBytes);
}

void Base64::write(void const * bytes, std::size_t size)
{
    auto const * next = static_cast<char const *>(bytes);
    while (size > 0) {
        std::size_t const taken = std::min(size, BlockBytes - m_Bytes.size());
        m_Bytes.append(next, taken);
        next += taken;
        size -= taken;
        if (m_Bytes.size() == BlockBytes)
            flush();
    }
}

void Base64::end()
{
    flush();
}

std::string Base64::text(std::string_view bytes)
{
    std::string text;
    text.reserve((bytes.size() + 2) / 3 * 4);
    for (std::size_t i = 0; i < bytes.size(); i += 3)
        append(text, bytes.substr(i, 3));
    return text;
}

void Base64::flush()
{
    std::string text;
    for (std::size_t i = 0; i < m_Bytes.size(); i += LineBytes)
        text += Base64::text(std::string_view(m_Bytes).substr(i, LineBytes)) + "\n";
    m_Sink(text);
    m_Bytes.clear();
}

} // namespace keld::view
