#ifndef KELD_TOOLS_VIEW_BASE64_H
#define KELD_TOOLS_VIEW_BASE64_H

#include <cstddef>
#include <functional>
#include <span>
#include <string>
#include <string_view>

namespace keld::view {

/// Gets a text in pieces.
using Sink = std::function<void(std::string_view)>;

/// Writes bytes as text, in lines.
class Base64
{
public:
    explicit Base64(Sink sink);
    Base64(Base64 const &) = delete;
    Base64 & operator=(Base64 const &) = delete;

    void write(void const * bytes, std::size_t size);

    template <class Value> void write(Value const & value) { write(&value, sizeof(value)); }

    /// Ends the text; nothing may follow.
    void end();

    /// The same in one line.
    static std::string text(std::string_view bytes);

private:
    void flush();

    Sink m_Sink;
    std::string m_Bytes;
};

} // namespace keld::view

#endif
