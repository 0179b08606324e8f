#ifndef KELD_TRANSL_ATTRIBUTES_ATTRIBUTE_ACCESS_H
#define KELD_TRANSL_ATTRIBUTES_ATTRIBUTE_ACCESS_H

#include <keld-transl/attributes/attribute.h>

namespace transl_tk {

/// The library's way to free attributes that no list holds any more: `Attribute::destruct` would
/// look for each of them in the lists of all sub-pools.
struct AttributeAccess
{
    static void free(Attribute * attribute) { delete attribute; }
};

} // namespace transl_tk

#endif
