#ifndef KELD_TOOLS_SAFE_TEXT_H
#define KELD_TOOLS_SAFE_TEXT_H

#include <string>
#include <string_view>

namespace keld {

/// `text` with each byte of a control character as \xNN, so that no word of a translator drives the
/// terminal. Bytes that are no UTF-8 stay.
std::string terminalText(std::string_view text);

/// `text` as text of an HTML page, or as the value of an attribute in quotes. Markup is escaped;
/// bytes that are no UTF-8, and characters that a page may not hold, become U+FFFD. Control
/// characters other than line feed and tab become \xNN for each of their bytes.
std::string htmlText(std::string_view text);

} // namespace keld

#endif
