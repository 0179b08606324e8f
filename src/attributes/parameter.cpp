#include "attributes/held_values.h"

#include <keld-transl/attributes/parameter.h>

#include <memory>

namespace transl_tk {

namespace {

class ProxyParameter final : public Parameter
{
public:
    explicit ProxyParameter(Param param) : m_Param(param) {}
    ~ProxyParameter() override = default;

    template <class Content> void makeValue(Content const & content) { m_Values.make(content); }

    Param getParam() const override { return m_Param; }
    void addValue(IValue * value) override { m_Values.adopt(value); }
    int getNumValues() const override { return m_Values.size(); }
    IValue * getValue(int const & index) const override { return m_Values.at(index); }

private:
    Param m_Param;
    HeldValues m_Values;
};

} // namespace

Parameter * Parameter::create(Param const & param)
{
    return new ProxyParameter(param);
}

Parameter * Parameter::create(Param const & param, double const & a, double const & b,
                              double const & c)
{
    auto parameter = std::make_unique<ProxyParameter>(param);
    for (double const value : {a, b, c})
        parameter->makeValue(value);
    return parameter.release();
}

Parameter * Parameter::create(Param const & param, IValue * value)
{
    Parameter * const parameter = create(param);
    parameter->addValue(value); // the first few values need no memory
    return parameter;
}

void Parameter::destruct(Parameter * parameter)
{
    delete parameter;
}

} // namespace transl_tk
