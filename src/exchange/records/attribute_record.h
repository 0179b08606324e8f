#ifndef KELD_TRANSL_EXCHANGE_RECORDS_ATTRIBUTE_RECORD_H
#define KELD_TRANSL_EXCHANGE_RECORDS_ATTRIBUTE_RECORD_H

#include "exchange/records/attachment_list.h"
#include "exchange/records/value_record.h"
#include "exchange/section.h"

#include <keld-transl/attributes/attribute.h>

namespace transl_tk {

/// The attributes: name, type, counted values, and what they hang on. They have no ids.
struct AttributesContent
{
    template <class Sink> static void put(Sink & sink, ModelContent const & model)
    {
        sink.count(model.subPool.m_Attributes.size());
        for (Attribute * const attribute : model.subPool.m_Attributes) {
            sink.string(attribute->getName());
            sink.i32(attribute->getType());
            putValues(sink, *attribute);
            putAttachments(sink, *attribute);
        }
    }

    static void read(StreamReader & reader, ReadSession & session);
};

} // namespace transl_tk

#endif
