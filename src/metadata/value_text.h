#ifndef KELD_TRANSL_METADATA_VALUE_TEXT_H
#define KELD_TRANSL_METADATA_VALUE_TEXT_H

#include <keld-transl/attributes/value.h>

#include <ostream>

namespace transl_tk {

/// Writes a value as people read it: text as it is, a bool as 0 or 1, an `unsigned char` as its
/// number. Null and values of types that do not exist write nothing.
void writeValue(std::ostream & out, IValue * value);

} // namespace transl_tk

#endif
