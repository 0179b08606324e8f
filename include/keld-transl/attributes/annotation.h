#ifndef KELD_TRANSL_ATTRIBUTES_ANNOTATION_H
#define KELD_TRANSL_ATTRIBUTES_ANNOTATION_H

#include <keld-transl/model/base.h>

namespace transl_tk {

/// An annotation of a model: a placed block of text with points and display numbers.
///
/// The toolkit moves all values unchanged and gives a meaning to none; the names only count them.
/// Translators settle their use.
class KELD_TRANSL_EXPORT Annotation : public Base
{
protected:
    Annotation() = default;
    explicit Annotation(int const & id) : Base(id) {}
    ~Annotation() override;

public:
    Annotation(Annotation const &) = default;
    Annotation & operator=(Annotation const &) = default;

    /// Makes an annotation of the current sub-pool. Copies `pointCount` points of three doubles
    /// each, none when the count is not positive or `points` is null, and both texts, which must
    /// not be null. Null when `id` is taken; see `Base` for the rules of ids.
    static Annotation *
    create(int const & id, double const (&first)[3], double const (&second)[3],
           double const (&third)[3], double const (&fourth)[3], int const & pointCount,
           double const * points, int const (&firstInts)[3], int const (&secondInts)[3],
           int const (&thirdInts)[3], int const (&fourthInts)[3], int const & firstNumber,
           int const & secondNumber, int const & thirdNumber, int const & fourthNumber,
           int const & fifthNumber, char const * firstText, char const * secondText);
    static void destruct(Annotation * annotation);

    int getEntityKind() override = 0;

    virtual void getFirstTriple(double & x, double & y, double & z) = 0;
    virtual void getSecondTriple(double & x, double & y, double & z) = 0;
    virtual void getThirdTriple(double & x, double & y, double & z) = 0;
    virtual void getFourthTriple(double & x, double & y, double & z) = 0;

    virtual unsigned int getNumPoints() = 0;
    /// Three doubles a point, owned by the annotation. Null when there is no point.
    virtual double const * getPoints() = 0;

    virtual void getFirstInts(int & a, int & b, int & c) = 0;
    virtual void getSecondInts(int & a, int & b, int & c) = 0;
    virtual void getThirdInts(int & a, int & b, int & c) = 0;
    virtual void getFourthInts(int & a, int & b, int & c) = 0;

    virtual int getFirstNumber() = 0;
    virtual int getSecondNumber() = 0;
    virtual int getThirdNumber() = 0;
    virtual int getFourthNumber() = 0;
    virtual int getFifthNumber() = 0;

    /// The texts stay owned by the annotation.
    virtual char const * getFirstText() = 0;
    virtual char const * getSecondText() = 0;
};

} // namespace transl_tk

#endif
