#ifndef KELD_STEP_ATTRIBUTE_BOOK_H
#define KELD_STEP_ATTRIBUTE_BOOK_H

#include <keld-transl/attributes/attribute.h>

#include <map>
#include <optional>
#include <string>
#include <tuple>
#include <unordered_map>
#include <vector>

namespace transl_tk {
class Base;
}

namespace step {

/// What the numbers of attributes mean that this translator makes. Product data are the toolkit's
/// `Attribute::Product`.
enum AttributeNumber : int {
    ColourAttribute = 1,
    LayerAttribute = 3,
    MaterialAttribute = 4,
    ValidationAttribute = 5,
    HeaderAttribute = 6,
    ToleranceAttribute = 8,
    InstanceNameAttribute = 9,
    UnitAttribute = 10,
    DimensionAttribute = 11,
    GeometricToleranceAttribute = 12,
    DatumAttribute = 13,
    OccurrenceAttribute = 15
};

/// Makes attributes, one for all entities that have the same values.
class AttributeBook
{
public:
    /// A colour of 0 to 255 each, and an opacity in percent.
    struct Colour
    {
        unsigned char red, green, blue, opacity;
    };

    void add(transl_tk::Base * entity, char const * name, Colour const & colour);
    void add(transl_tk::Base * entity, AttributeNumber number, char const * name,
             std::string const & text);
    void add(transl_tk::Base * entity, AttributeNumber number, char const * name,
             std::vector<double> const & numbers);
    void add(transl_tk::Base * entity, AttributeNumber number, char const * name,
             std::vector<std::string> const & texts);
    void add(transl_tk::Base * entity, AttributeNumber number, char const * name,
             std::vector<int> const & numbers);
    /// The colour that surfaces of `entity` itself have got, not of what it belongs to.
    std::optional<Colour> colourOf(transl_tk::Base const * entity) const;

    /// A colour that `entity`, an instance, has where the instances `path` lead to it.
    void addOccurrence(transl_tk::Base * entity, char const * name, Colour const & colour,
                       std::vector<int> const & path);

    void addProduct(transl_tk::Base * entity, char const * name, std::string const & text);

private:
    template <class Value>
    void addValues(transl_tk::Base * entity, int number, char const * name,
                   std::vector<Value> const & values);

    using Texts = std::vector<std::string>;
    using Numbers = std::vector<double>;
    using Bytes = std::vector<unsigned char>;
    template <class Value>
    using Shared =
        std::map<std::tuple<int, std::string, std::vector<Value>>, transl_tk::Attribute *>;
    template <class Value> Shared<Value> & shared();

    Shared<std::string> m_Texts;
    Shared<double> m_Numbers;
    Shared<int> m_Integers;
    Shared<unsigned char> m_Bytes;
    std::unordered_map<transl_tk::Base const *, Colour> m_Colours;
};

} // namespace step

#endif
