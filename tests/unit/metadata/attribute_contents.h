#ifndef KELD_TESTS_UNIT_METADATA_ATTRIBUTE_CONTENTS_H
#define KELD_TESTS_UNIT_METADATA_ATTRIBUTE_CONTENTS_H

#include <keld-transl/attributes/attribute.h>

#include <string>
#include <type_traits>
#include <variant>
#include <vector>

namespace tests {

/// Content of a value of an attribute; of a null value, nothing.
using Content = std::variant<std::monostate, std::string, int, bool, float, double, unsigned char>;
using Contents = std::vector<Content>;

inline void append(transl_tk::Attribute & attribute, Content const & content)
{
    std::visit(
        [&attribute](auto const & value) {
            using Kind = std::decay_t<decltype(value)>;
            if constexpr (std::is_same_v<Kind, std::monostate>)
                attribute.addValue(static_cast<transl_tk::IValue *>(nullptr));
            else if constexpr (std::is_same_v<Kind, std::string>)
                attribute.addValue(value.c_str());
            else
                attribute.addValue(value);
        },
        content);
}

/// A new attribute of the current sub-pool.
inline transl_tk::Attribute * anAttribute(char const * name, int type, Contents const & contents)
{
    transl_tk::Attribute * const attribute =
        transl_tk::Attribute::create(name, transl_tk::Attribute::Type(type));
    for (Content const & content : contents)
        append(*attribute, content);
    return attribute;
}

/// What stands in an attribute of ints and texts.
inline Contents contentsOf(transl_tk::Attribute & attribute)
{
    Contents contents;
    for (int i = 0; i < attribute.getNumValues(); ++i) {
        transl_tk::IValue & value = *attribute.getValue(i);
        int number = 0;
        char * text = nullptr;
        if (value.getType() == 1) {
            value.getValue(text);
            contents.emplace_back(std::string(text));
        } else {
            value.getValue(number);
            contents.emplace_back(number);
        }
    }
    return contents;
}

} // namespace tests

#endif
