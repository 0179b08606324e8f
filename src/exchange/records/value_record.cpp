#include "exchange/records/value_record.h"

#include <string>

namespace transl_tk {

OwnedValue readValue(StreamReader & reader)
{
    int type = NoValue;
    reader.i32(type);
    switch (type) {
    case 1: {
        std::string text;
        reader.string(text);
        return OwnedValue(IValue::create(text.c_str()));
    }
    case 2: {
        int number = 0;
        reader.i32(number);
        return OwnedValue(IValue::create(number));
    }
    case 3: {
        bool flag = false;
        reader.u8(flag);
        return OwnedValue(IValue::create(flag));
    }
    case 4: {
        float number = 0.0F;
        reader.f32(number);
        return OwnedValue(IValue::create(number));
    }
    case 5: {
        double number = 0.0;
        reader.f64(number);
        return OwnedValue(IValue::create(number));
    }
    case 6: {
        unsigned char byte = 0;
        reader.byte(byte);
        return OwnedValue(IValue::create(byte));
    }
    default:
        return nullptr;
    }
}

} // namespace transl_tk
