#ifndef KELD_TESTS_SUPPORT_FOREIGN_VALUE_H
#define KELD_TESTS_SUPPORT_FOREIGN_VALUE_H

#include <keld-transl/attributes/value.h>

#include <gtest/gtest.h>
#include <utility>
#include <vector>

namespace tests {

/// A value of a type of its own, which fails the test when its content is asked for, and notes its
/// type in a list when it goes.
class ForeignValue : public transl_tk::IValue
{
public:
    explicit ForeignValue(int type, std::vector<int> * freed = nullptr)
        : m_Type(type), m_Freed(freed)
    {}
    ~ForeignValue() override
    {
        if (m_Freed != nullptr)
            m_Freed->push_back(m_Type);
    }

    int getType() const override { return m_Type; }
    void getValue(unsigned char &) override { fail(); }
    void getValue(double &) override { fail(); }
    void getValue(float &) override { fail(); }
    void getValue(bool &) override { fail(); }
    void getValue(int &) override { fail(); }
    void getValue(char *&) override { fail(); }
    void setValue(unsigned char const &) override { fail(); }
    void setValue(double const &) override { fail(); }
    void setValue(float const &) override { fail(); }
    void setValue(bool const &) override { fail(); }
    void setValue(int const &) override { fail(); }
    void setValue(char const *) override { fail(); }

private:
    static void fail() { ADD_FAILURE() << "the content of a foreign value was asked for or set"; }

    int m_Type;
    std::vector<int> * m_Freed;
};

} // namespace tests

#endif
