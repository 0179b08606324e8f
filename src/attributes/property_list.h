#ifndef KELD_TRANSL_ATTRIBUTES_PROPERTY_LIST_H
#define KELD_TRANSL_ATTRIBUTES_PROPERTY_LIST_H

#include <keld-transl/attributes/value.h>

#include <cstddef>
#include <string>
#include <unordered_map>
#include <vector>

namespace transl_tk {

/// Owned values under unique names, in order of adding, so that a tree that was read writes the
/// same bytes again.
class PropertyList
{
public:
    PropertyList() = default;
    PropertyList(PropertyList const &) = delete;
    PropertyList & operator=(PropertyList const &) = delete;
    ~PropertyList()
    {
        for (Map::value_type const * const property : m_Order)
            IValue::destruct(property->second);
    }

    /// Does nothing when the name is there already.
    void add(char const * name, IValue * value)
    {
        // A value must not be adopted halfway: what can fail comes first.
        if (m_Order.size() == m_Order.capacity())
            m_Order.reserve(2 * m_Order.size() + 1);
        auto const [property, isNew] = m_Map.try_emplace(name, value);
        if (isNew)
            m_Order.push_back(&*property);
    }

    bool forEach(bool (*callback)(char const *, IValue *, void *), void * user) const
    {
        for (std::size_t i = 0; i < m_Order.size(); ++i)
            if (!callback(m_Order[i]->first.c_str(), m_Order[i]->second, user))
                return false;
        return true;
    }

private:
    using Map = std::unordered_map<std::string, IValue *>;

    Map m_Map;
    std::vector<Map::value_type const *> m_Order;
};

} // namespace transl_tk

#endif
