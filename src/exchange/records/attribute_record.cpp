#include "exchange/records/attribute_record.h"

namespace transl_tk {

void AttributesContent::read(StreamReader & reader, ReadSession & session)
{
    constexpr std::size_t LeastSize = 16;
    std::string name;
    for (std::size_t left = reader.count(LeastSize); left != 0; --left) {
        reader.beginRecord();
        int type = 0;
        reader.string(name);
        reader.i32(type);
        Attribute & attribute = session.makeAttribute(name, static_cast<Attribute::Type>(type));
        readValues(reader, attribute);
        readAttachments(reader, attribute);
    }
}

} // namespace transl_tk
