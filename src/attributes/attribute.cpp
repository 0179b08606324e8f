#include "attributes/entity_links.h"
#include "attributes/held_values.h"

#include <keld-transl/attributes/attribute.h>

#include <memory>
#include <string>
#include <vector>

namespace transl_tk {

namespace {

class ProxyAttribute final : public Attribute, public Pooled<ProxyAttribute>
{
public:
    ProxyAttribute(char const * name, Type type) : m_Type(type), m_Name(name) {}
    ~ProxyAttribute() override = default;

    void addValue(IValue * value) override { m_Values.adopt(value); }
    void addValue(unsigned char const & value) override { m_Values.make(value); }
    void addValue(double const & value) override { m_Values.make(value); }
    void addValue(float const & value) override { m_Values.make(value); }
    void addValue(bool const & value) override { m_Values.make(value); }
    void addValue(int const & value) override { m_Values.make(value); }
    void addValue(char const * value) override
    {
        if (value != nullptr)
            m_Values.make(value);
    }

    Type getType() const override { return m_Type; }
    char const * getName() const override { return m_Name.c_str(); }
    int getNumValues() const override { return m_Values.size(); }
    IValue * getValue(int const & index) const override { return m_Values.at(index); }

    void addEntity(Base * entity) override { m_Entities.add(entity); }
    void removeEntity(Base * entity) override { m_Entities.remove(entity); }
    bool forEachEntity(bool (*callback)(Base *, void *), void * user) override
    {
        return m_Entities.forEach(callback, user);
    }

private:
    Type m_Type;
    std::string m_Name;
    HeldValues m_Values;
    EntityLinks m_Entities;
};

} // namespace

Attribute * Attribute::create(char const * name, Type const & type)
{
    SubPool * const subPool = CurrentSubPool::get();
    if (name == nullptr || subPool == nullptr)
        return nullptr;
    auto attribute = std::make_unique<ProxyAttribute>(name, type);
    subPool->m_Attributes.push_back(attribute.get());
    return attribute.release();
}

void Attribute::destruct(Attribute * attribute)
{
    if (attribute == nullptr)
        return;
    SubPool * const subPool = CurrentSubPool::get();
    if (subPool != nullptr && std::erase(subPool->m_Attributes, attribute) == 0)
        CurrentSubPool::leaveOthers(attribute);
    delete attribute;
}

void Attribute::getColor(unsigned char (&colour)[4])
{
    colour[0] = colour[1] = colour[2] = 0;
    colour[3] = 100;
    int component = 0;
    for (int i = 0; i < getNumValues() && component < 4; ++i) {
        IValue * const value = getValue(i);
        if (value != nullptr && value->getType() == 6)
            value->getValue(colour[component++]);
    }
}

} // namespace transl_tk
