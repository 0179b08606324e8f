#ifndef KELD_TRANSL_SRC_PROCESS_XML_TEXT_H
#define KELD_TRANSL_SRC_PROCESS_XML_TEXT_H

#include <libxml/xmlstring.h>
#include <string>
#include <string_view>

namespace transl_tk::xml {

/// The XML library's view of a UTF-8 text.
inline xmlChar const * bytes(char const * text)
{
    return reinterpret_cast<xmlChar const *>(text);
}

/// Whether XML 1.0 allows the character.
bool canHold(char32_t character);

/// Whether `text` is valid UTF-8 of characters that XML 1.0 allows.
bool canHold(std::string_view text);

/// One character below 2048 in UTF-8.
std::string utf8(char32_t character);

} // namespace transl_tk::xml

#endif
