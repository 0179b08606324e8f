#ifndef KELD_TRANSL_EXCHANGE_RECORDS_VALUE_RECORD_H
#define KELD_TRANSL_EXCHANGE_RECORDS_VALUE_RECORD_H

#include "exchange/stream_reader.h"
#include "geom/owned.h"

#include <keld-transl/attributes/value.h>

namespace transl_tk {

using OwnedValue = geom::Owned<IValue>;

/// Stands for a value that is not there; no type has this number.
constexpr int NoValue = 0;

/// Puts the number of a value's type and its content. A type without a number of its own, and a
/// null, is the number alone.
template <class Sink> void putValue(Sink & sink, IValue * value)
{
    int const type = value != nullptr ? value->getType() : NoValue;
    sink.i32(type);
    switch (type) {
    case 1: {
        char * text = nullptr;
        value->getValue(text);
        sink.string(text);
        break;
    }
    case 2: {
        int number = 0;
        value->getValue(number);
        sink.i32(number);
        break;
    }
    case 3: {
        bool flag = false;
        value->getValue(flag);
        sink.u8(flag);
        break;
    }
    case 4: {
        // A float is asked for as a double, which it does not hand out: such a value has a size,
        // but writing it ends the process.
        double number = 0.0;
        if constexpr (!Sink::CountsOnly)
            value->getValue(number);
        sink.f32(static_cast<float>(number));
        break;
    }
    case 5: {
        double number = 0.0;
        value->getValue(number);
        sink.f64(number);
        break;
    }
    case 6: {
        unsigned char byte = 0;
        value->getValue(byte);
        sink.byte(byte);
        break;
    }
    default:
        break;
    }
}

/// Reads what `putValue` put; null for a type without a number of its own.
OwnedValue readValue(StreamReader & reader);

/// Puts the values of an attribute or a parameter, counted.
template <class Sink, class Holder> void putValues(Sink & sink, Holder const & holder)
{
    int const count = holder.getNumValues();
    sink.count(static_cast<std::size_t>(count));
    for (int i = 0; i < count; ++i)
        putValue(sink, holder.getValue(i));
}

/// Reads what `putValues` put into an attribute or a parameter.
template <class Holder> void readValues(StreamReader & reader, Holder & holder)
{
    for (std::size_t left = reader.count(4); left != 0; --left) {
        OwnedValue value = readValue(reader);
        holder.addValue(value.get());
        value.release();
    }
}

} // namespace transl_tk

#endif
