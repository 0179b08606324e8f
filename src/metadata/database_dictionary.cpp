#include "metadata/feature_type.h"

#include <keld-transl/attributes/attribute.h>
#include <keld-transl/metadata/database_dictionary.h>

#include <climits>
#include <utility>

namespace transl_tk {

namespace {

constexpr int s_TextValue = 1;
constexpr int s_IntValue = 2;

void increase(int & number)
{
    if (number < INT_MAX)
        ++number;
}

/// Goes through the values of an attribute that may hold anything.
class Values
{
public:
    explicit Values(Attribute const & attribute)
        : m_Attribute(attribute), m_Left(attribute.getNumValues())
    {}

    bool atEnd() const { return m_Left <= 0; }

    bool read(int & number)
    {
        IValue * const value = next(s_IntValue);
        if (value != nullptr)
            value->getValue(number);
        return value != nullptr;
    }

    bool read(std::string & text)
    {
        char * content = nullptr;
        if (IValue * const value = next(s_TextValue); value != nullptr)
            value->getValue(content);
        if (content != nullptr)
            text = content;
        return content != nullptr;
    }

    /// Reads a number of values that are to follow, as one of pairs. Whether they do is not known.
    bool readPairs(int & pairs)
    {
        int values = 0;
        if (!read(values) || values < 0 || values % 2 != 0)
            return false;
        pairs = values / 2;
        return true;
    }

private:
    IValue * next(int type)
    {
        if (atEnd())
            return nullptr;
        --m_Left;
        IValue * const value = m_Attribute.getValue(m_Index++);
        return value != nullptr && value->getType() == type ? value : nullptr;
    }

    Attribute const & m_Attribute;
    int m_Index = 0;
    int m_Left;
};

} // namespace

void DataBaseDictionary::addData(DataBaseType const & type)
{
    increase(m_Counters[type]);
}

void DataBaseDictionary::addData(DataBaseType const & type, int const & value)
{
    m_Counters[type] = value;
}

void DataBaseDictionary::addData(DataBaseType const & type, std::string const & text)
{
    if (text.empty())
        return;
    if (type == TextList)
        m_Text += text + ',';
    else if (type == FeatureCounts)
        increase(m_Features[text]);
}

void DataBaseDictionary::addFeatureType(std::string const & name)
{
    countFeature(name, [this](DataBaseType type) { addData(type); });
}

void DataBaseDictionary::getData(DataBaseType const & type, int & value)
{
    auto const found = m_Counters.find(type);
    value = found == m_Counters.end() ? 0 : found->second;
}

void DataBaseDictionary::getData(DataBaseType const & type, std::string & text)
{
    if (type == TextList) {
        text = m_Text;
    } else if (type == FeatureCounts) {
        text.clear();
        for (auto const & [name, count] : m_Features)
            text += "Metadata: " + name + " | " + std::to_string(count) + "<br>";
    }
}

void DataBaseDictionary::resetData()
{
    m_Counters.clear();
    m_Features.clear();
    m_Text.clear();
}

void DataBaseDictionary::serialize()
{
    Attribute * const attribute = Attribute::create("", Attribute::Dictionary);
    if (attribute == nullptr)
        return;
    attribute->addValue(static_cast<int>(2 * m_Counters.size()));
    for (auto const & [type, number] : m_Counters) {
        attribute->addValue(static_cast<int>(type));
        attribute->addValue(number);
    }
    attribute->addValue(static_cast<int>(2 * m_Features.size()));
    for (auto const & [name, count] : m_Features) {
        attribute->addValue(name.c_str());
        attribute->addValue(count);
    }
    attribute->addValue(m_Text.c_str());
}

void DataBaseDictionary::deserialize(Attribute * attribute)
{
    DataBaseDictionary filled = *this;
    if (filled.insertFrom(attribute))
        *this = std::move(filled);
}

bool DataBaseDictionary::isDictionary(Attribute * attribute)
{
    return DataBaseDictionary().insertFrom(attribute);
}

/// False, and anything may stand in this dictionary, when `attribute` holds something else.
bool DataBaseDictionary::insertFrom(Attribute * attribute)
{
    if (attribute == nullptr)
        return false;
    Values values(*attribute);
    int pairs = 0;
    if (!values.readPairs(pairs))
        return false;
    for (; pairs > 0; --pairs) {
        int key = 0;
        int number = 0;
        if (!values.read(key) || !values.read(number))
            return false;
        m_Counters.emplace(static_cast<DataBaseType>(key), number);
    }
    if (!values.readPairs(pairs))
        return false;
    for (; pairs > 0; --pairs) {
        std::string name;
        int count = 0;
        if (!values.read(name) || !values.read(count))
            return false;
        m_Features.emplace(std::move(name), count);
    }
    return values.read(m_Text) && values.atEnd();
}

} // namespace transl_tk
