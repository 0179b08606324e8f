#include <keld-transl/attributes/option.h>

#include <memory>
#include <string>

namespace transl_tk {

namespace {

class ProxyOption final : public IOption
{
public:
    ProxyOption(char const * name, char const * description)
        : m_Name(name), m_Description(description)
    {}

    ~ProxyOption() override
    {
        for (IValue * value : m_Values)
            IValue::destruct(value);
    }

    char const * getName() const override { return m_Name.c_str(); }

    void addValue(IValue * value) override
    {
        if (value == nullptr)
            throw "NULL value";
        m_Values.push_back(value);
    }

    void setValue(int const & index, IValue * source) override
    {
        switch (source->getType()) {
        case 1:
            return copyValue<char *>(index, *source);
        case 2:
            return copyValue<int>(index, *source);
        case 3:
            return copyValue<bool>(index, *source);
        case 4:
            return copyValue<float>(index, *source);
        case 5:
            return copyValue<double>(index, *source);
        case 6:
            return copyValue<unsigned char>(index, *source);
        default:
            return;
        }
    }

    int getNumValues() const override { return static_cast<int>(m_Values.size()); }

    IValue * getValue(int const & index) const override
    {
        return m_Values[static_cast<std::size_t>(index)];
    }

    std::vector<IValue *> getValues() const override { return m_Values; }

    char const * getDescription() const override { return m_Description.c_str(); }

private:
    template <class T> void copyValue(int index, IValue & source)
    {
        T content{};
        source.getValue(content);
        getValue(index)->setValue(content);
    }

    std::string m_Name;
    std::string m_Description;
    std::vector<IValue *> m_Values;
};

} // namespace

IOption * IOption::create(char const * name, char const * description)
{
    if (name == nullptr || description == nullptr)
        return nullptr;
    return new ProxyOption(name, description);
}

IOption * IOption::create(char const * name, IValue * value, char const * description)
{
    if (name == nullptr || value == nullptr || description == nullptr)
        return nullptr;
    auto option = std::make_unique<ProxyOption>(name, description);
    option->addValue(value);
    return option.release();
}

void IOption::destruct(IOption * option)
{
    delete option;
}

} // namespace transl_tk
