#include "process/options_file.h"
#include "process/xml_text.h"

#include <algorithm>
#include <locale>
#include <new>
#include <sstream>

namespace transl_tk::options_file {

namespace {

std::string textOf(IValue & value)
{
    char * text = nullptr;
    value.getValue(text);
    return text;
}

template <class T> T contentOf(IValue & value)
{
    T content{};
    value.getValue(content);
    return content;
}

std::string defaultFormat(double number)
{
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << number;
    return stream.str();
}

std::string characterOf(unsigned char number)
{
    return xml::canHold(char32_t{number}) ? xml::utf8(number) : std::string();
}

bool canHold(IOption const & option)
{
    if (!xml::canHold(option.getName()) || !xml::canHold(option.getDescription()))
        return false;
    auto const values = option.getValues();
    return std::all_of(values.begin(), values.end(), [](IValue * value) {
        return value->getType() != 1 || xml::canHold(textOf(*value));
    });
}

void add(xmlNode * root, std::string const & content)
{
    // This call takes the content as plain text, and the saving of the document escapes it.
    xmlChar const * const text = content.empty() ? nullptr : xml::bytes(content.c_str());
    if (xmlNewTextChild(root, nullptr, xml::bytes("data"), text) == nullptr)
        throw std::bad_alloc();
}

void add(xmlNode * root, IValue & value)
{
    int const type = value.getType();
    add(root, std::to_string(type));
    switch (type) {
    case 1:
        return add(root, textOf(value));
    case 2:
        return add(root, std::to_string(contentOf<int>(value)));
    case 3:
        return add(root, contentOf<bool>(value) ? "TRUE" : "FALSE");
    case 4:
        // Asked as another type than its own, on purpose: the reader drops what a float holds, and
        // the process ends here rather than a translator going on with 0.
        return add(root, defaultFormat(static_cast<float>(contentOf<double>(value))));
    case 5:
        return add(root, defaultFormat(contentOf<double>(value)));
    case 6:
        return add(root, characterOf(contentOf<unsigned char>(value)));
    default:
        return;
    }
}

} // namespace

std::optional<std::size_t> firstUnwritable(std::vector<IOption *> const & options)
{
    auto const found = std::find_if_not(options.begin(), options.end(),
                                        [](IOption const * option) { return canHold(*option); });
    if (found == options.end())
        return std::nullopt;
    return static_cast<std::size_t>(found - options.begin());
}

Document write(std::vector<IOption *> const & options)
{
    Document document(xmlNewDoc(xml::bytes("1.0")));
    if (document == nullptr)
        throw std::bad_alloc();
    xmlNode * const root = xmlNewDocNode(document.get(), nullptr, xml::bytes(rootName), nullptr);
    if (root == nullptr)
        throw std::bad_alloc();
    xmlDocSetRootElement(document.get(), root);
    for (IOption const * option : options) {
        add(root, option->getName());
        add(root, option->getDescription());
        auto const values = option->getValues();
        add(root, std::to_string(values.size()));
        for (IValue * value : values)
            add(root, *value);
    }
    return document;
}

} // namespace transl_tk::options_file
