#include <keld-transl/attributes/value.h>

#include <cstdlib>
#include <string>
#include <type_traits>

namespace transl_tk {

namespace {

// A caller that mistakes the type of a value would go on with a wrong model: nothing is given back
// to it, not even an error that it could pass over.
[[noreturn]] void endOnWrongType()
{
    std::abort();
}

template <class T> constexpr int typeNumber = 0;
template <> constexpr int typeNumber<std::string> = 1;
template <> constexpr int typeNumber<int> = 2;
template <> constexpr int typeNumber<bool> = 3;
template <> constexpr int typeNumber<float> = 4;
template <> constexpr int typeNumber<double> = 5;
template <> constexpr int typeNumber<unsigned char> = 6;

template <class T> class ProxyValue final : public IValue
{
public:
    template <class Source> explicit ProxyValue(Source const & value) : m_Value(value) {}

    int getType() const override { return typeNumber<T>; }

    void getValue(unsigned char & value) override { get(value); }
    void getValue(double & value) override { get(value); }
    void getValue(float & value) override { get(value); }
    void getValue(bool & value) override { get(value); }
    void getValue(int & value) override { get(value); }
    void getValue(char *& value) override
    {
        if constexpr (std::is_same_v<T, std::string>)
            value = m_Value.data();
        else
            endOnWrongType();
    }

    void setValue(unsigned char const & value) override { set(value); }
    void setValue(double const & value) override { set(value); }
    void setValue(float const & value) override { set(value); }
    void setValue(bool const & value) override { set(value); }
    void setValue(int const & value) override { set(value); }
    void setValue(char const * value) override
    {
        if constexpr (std::is_same_v<T, std::string>) {
            if (value != nullptr)
                m_Value = value;
        } else {
            endOnWrongType();
        }
    }

private:
    template <class Asked> void get([[maybe_unused]] Asked & value) const
    {
        if constexpr (std::is_same_v<T, Asked>)
            value = m_Value;
        else
            endOnWrongType();
    }

    template <class Given> void set([[maybe_unused]] Given const & value)
    {
        if constexpr (std::is_same_v<T, Given>)
            m_Value = value;
        else
            endOnWrongType();
    }

    T m_Value;
};

} // namespace

IValue * IValue::create(unsigned char const & value)
{
    return new ProxyValue<unsigned char>(value);
}

IValue * IValue::create(int const & value)
{
    return new ProxyValue<int>(value);
}

IValue * IValue::create(float const & value)
{
    return new ProxyValue<float>(value);
}

IValue * IValue::create(double const & value)
{
    return new ProxyValue<double>(value);
}

IValue * IValue::create(bool const & value)
{
    return new ProxyValue<bool>(value);
}

IValue * IValue::create(char const * value)
{
    return value == nullptr ? nullptr : new ProxyValue<std::string>(value);
}

void IValue::destruct(IValue * value)
{
    delete value;
}

} // namespace transl_tk
