#ifndef KELD_TRANSL_ATTRIBUTES_VALUE_H
#define KELD_TRANSL_ATTRIBUTES_VALUE_H

#include <keld-transl/export.h>

namespace transl_tk {

/// One typed value: what options, attributes and parameters hold.
///
/// Types are not converted. Reading or writing a value as another type than its own ends the
/// process at once, so ask `getType` first. A value belongs to the holder that it is added to, and
/// to one holder only; one that is held by nobody is freed with `destruct`.
class KELD_TRANSL_EXPORT IValue
{
protected:
    IValue() = default;
    virtual ~IValue() = default;

public:
    IValue(IValue const &) = delete;
    IValue & operator=(IValue const &) = delete;

    /// Make a value that the caller owns. The text is copied; a null text gives null.
    static IValue * create(unsigned char const & value);
    static IValue * create(int const & value);
    static IValue * create(float const & value);
    static IValue * create(double const & value);
    static IValue * create(bool const & value);
    static IValue * create(char const * value);

    /// Frees a value; null is no fault.
    static void destruct(IValue * value);

    /// 1 text, 2 int, 3 bool, 4 float, 5 double, 6 unsigned char.
    virtual int getType() const = 0;

    virtual void getValue(unsigned char & value) = 0;
    virtual void getValue(double & value) = 0;
    virtual void getValue(float & value) = 0;
    virtual void getValue(bool & value) = 0;
    virtual void getValue(int & value) = 0;
    /// Gives the stored text itself, valid until the value changes or goes.
    virtual void getValue(char *& value) = 0;

    virtual void setValue(unsigned char const & value) = 0;
    virtual void setValue(double const & value) = 0;
    virtual void setValue(float const & value) = 0;
    virtual void setValue(bool const & value) = 0;
    virtual void setValue(int const & value) = 0;
    /// Copies the text; null changes nothing.
    virtual void setValue(char const * value) = 0;
};

} // namespace transl_tk

#endif
