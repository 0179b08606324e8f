#include "metadata/value_text.h"

namespace transl_tk {

namespace {

template <class Content> Content contentOf(IValue & value)
{
    Content content{};
    value.getValue(content);
    return content;
}

} // namespace

void writeValue(std::ostream & out, IValue * value)
{
    if (value == nullptr)
        return;
    switch (value->getType()) {
    case 1:
        out << contentOf<char *>(*value);
        break;
    case 2:
        out << contentOf<int>(*value);
        break;
    case 3:
        out << contentOf<bool>(*value);
        break;
    case 4:
        out << contentOf<float>(*value);
        break;
    case 5:
        out << contentOf<double>(*value);
        break;
    case 6:
        out << int{contentOf<unsigned char>(*value)};
        break;
    default:
        break;
    }
}

} // namespace transl_tk
