#include "attribute_book.h"

#include <string_view>

namespace step {

namespace {

void append(transl_tk::Attribute & attribute, std::string const & value)
{
    attribute.addValue(value.c_str());
}

void append(transl_tk::Attribute & attribute, double value)
{
    attribute.addValue(value);
}

void append(transl_tk::Attribute & attribute, int value)
{
    attribute.addValue(value);
}

void append(transl_tk::Attribute & attribute, unsigned char value)
{
    attribute.addValue(value);
}

} // namespace

template <> AttributeBook::Shared<std::string> & AttributeBook::shared()
{
    return m_Texts;
}

template <> AttributeBook::Shared<double> & AttributeBook::shared()
{
    return m_Numbers;
}

template <> AttributeBook::Shared<int> & AttributeBook::shared()
{
    return m_Integers;
}

template <> AttributeBook::Shared<unsigned char> & AttributeBook::shared()
{
    return m_Bytes;
}

template <class Value>
void AttributeBook::addValues(transl_tk::Base * entity, int number, char const * name,
                              std::vector<Value> const & values)
{
    transl_tk::Attribute *& attribute = shared<Value>()[{number, name, values}];
    if (attribute == nullptr) {
        attribute =
            transl_tk::Attribute::create(name, static_cast<transl_tk::Attribute::Type>(number));
        for (Value const & value : values)
            append(*attribute, value);
    }
    attribute->addEntity(entity);
}

void AttributeBook::add(transl_tk::Base * entity, char const * name, Colour const & colour)
{
    addValues(entity, ColourAttribute, name,
              Bytes{colour.red, colour.green, colour.blue, colour.opacity});
    // One for all stands behind one for surfaces, and one for curves does not count.
    if (name == std::string_view("surface color"))
        m_Colours[entity] = colour;
    else if (name == std::string_view("color"))
        m_Colours.emplace(entity, colour);
}

std::optional<AttributeBook::Colour> AttributeBook::colourOf(transl_tk::Base const * entity) const
{
    auto const found = m_Colours.find(entity);
    return found == m_Colours.end() ? std::nullopt : std::optional(found->second);
}

void AttributeBook::add(transl_tk::Base * entity, AttributeNumber number, char const * name,
                        std::string const & text)
{
    addValues(entity, number, name, Texts{text});
}

void AttributeBook::add(transl_tk::Base * entity, AttributeNumber number, char const * name,
                        std::vector<double> const & numbers)
{
    addValues(entity, number, name, numbers);
}

void AttributeBook::add(transl_tk::Base * entity, AttributeNumber number, char const * name,
                        std::vector<std::string> const & texts)
{
    addValues(entity, number, name, texts);
}

void AttributeBook::add(transl_tk::Base * entity, AttributeNumber number, char const * name,
                        std::vector<int> const & numbers)
{
    addValues(entity, number, name, numbers);
}

void AttributeBook::addOccurrence(transl_tk::Base * entity, char const * name,
                                  Colour const & colour, std::vector<int> const & path)
{
    auto * const attribute = transl_tk::Attribute::create(
        name, static_cast<transl_tk::Attribute::Type>(OccurrenceAttribute));
    for (unsigned char const component : {colour.red, colour.green, colour.blue, colour.opacity})
        attribute->addValue(component);
    for (int const id : path)
        attribute->addValue(id);
    attribute->addEntity(entity);
}

void AttributeBook::addProduct(transl_tk::Base * entity, char const * name,
                               std::string const & text)
{
    addValues(entity, transl_tk::Attribute::Product, name, Texts{text});
}

} // namespace step
