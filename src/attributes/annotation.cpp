#include "geom/array.h"
#include "model/entity.h"

#include <keld-transl/attributes/annotation.h>

#include <array>
#include <string>

namespace transl_tk {

namespace {

using Triple = std::array<double, 3>;
using Ints = std::array<int, 3>;

template <class T> void give(std::array<T, 3> const & values, T & a, T & b, T & c)
{
    a = values[0];
    b = values[1];
    c = values[2];
}

class ProxyAnnotation final : public Annotation, public Pooled<ProxyAnnotation>
{
public:
    ProxyAnnotation(int id, Triple const & first, Triple const & second, Triple const & third,
                    Triple const & fourth, int pointCount, double const * points,
                    Ints const & firstInts, Ints const & secondInts, Ints const & thirdInts,
                    Ints const & fourthInts, int firstNumber, int secondNumber, int thirdNumber,
                    int fourthNumber, int fifthNumber, char const * firstText,
                    char const * secondText)
        : Annotation(id), m_FirstTriple(first), m_SecondTriple(second), m_ThirdTriple(third),
          m_FourthTriple(fourth),
          m_Points(pointCount > 0 && points != nullptr ? 3LL * pointCount : 0),
          m_FirstInts(firstInts), m_SecondInts(secondInts), m_ThirdInts(thirdInts),
          m_FourthInts(fourthInts), m_FirstNumber(firstNumber), m_SecondNumber(secondNumber),
          m_ThirdNumber(thirdNumber), m_FourthNumber(fourthNumber), m_FifthNumber(fifthNumber),
          m_FirstText(firstText), m_SecondText(secondText)
    {
        m_Points.copyFrom(points);
    }
    ProxyAnnotation(ProxyAnnotation const &) = delete;
    ProxyAnnotation & operator=(ProxyAnnotation const &) = delete;
    ~ProxyAnnotation() override = default;

    int getEntityKind() override { return EntityKindAnnotation; }

    void getFirstTriple(double & x, double & y, double & z) override
    {
        give(m_FirstTriple, x, y, z);
    }
    void getSecondTriple(double & x, double & y, double & z) override
    {
        give(m_SecondTriple, x, y, z);
    }
    void getThirdTriple(double & x, double & y, double & z) override
    {
        give(m_ThirdTriple, x, y, z);
    }
    void getFourthTriple(double & x, double & y, double & z) override
    {
        give(m_FourthTriple, x, y, z);
    }

    unsigned int getNumPoints() override { return static_cast<unsigned int>(m_Points.size() / 3); }
    double const * getPoints() override { return m_Points.data(); }

    void getFirstInts(int & a, int & b, int & c) override { give(m_FirstInts, a, b, c); }
    void getSecondInts(int & a, int & b, int & c) override { give(m_SecondInts, a, b, c); }
    void getThirdInts(int & a, int & b, int & c) override { give(m_ThirdInts, a, b, c); }
    void getFourthInts(int & a, int & b, int & c) override { give(m_FourthInts, a, b, c); }

    int getFirstNumber() override { return m_FirstNumber; }
    int getSecondNumber() override { return m_SecondNumber; }
    int getThirdNumber() override { return m_ThirdNumber; }
    int getFourthNumber() override { return m_FourthNumber; }
    int getFifthNumber() override { return m_FifthNumber; }

    char const * getFirstText() override { return m_FirstText.c_str(); }
    char const * getSecondText() override { return m_SecondText.c_str(); }

private:
    Triple m_FirstTriple;
    Triple m_SecondTriple;
    Triple m_ThirdTriple;
    Triple m_FourthTriple;
    geom::Array<double> m_Points;
    Ints m_FirstInts;
    Ints m_SecondInts;
    Ints m_ThirdInts;
    Ints m_FourthInts;
    int m_FirstNumber;
    int m_SecondNumber;
    int m_ThirdNumber;
    int m_FourthNumber;
    int m_FifthNumber;
    std::string m_FirstText;
    std::string m_SecondText;
};

} // namespace

Annotation *
Annotation::create(int const & id, double const (&first)[3], double const (&second)[3],
                   double const (&third)[3], double const (&fourth)[3], int const & pointCount,
                   double const * points, int const (&firstInts)[3], int const (&secondInts)[3],
                   int const (&thirdInts)[3], int const (&fourthInts)[3], int const & firstNumber,
                   int const & secondNumber, int const & thirdNumber, int const & fourthNumber,
                   int const & fifthNumber, char const * firstText, char const * secondText)
{
    return createEntity<ProxyAnnotation>(
        &SubPool::m_Annotations, id, std::to_array(first), std::to_array(second),
        std::to_array(third), std::to_array(fourth), pointCount, points, std::to_array(firstInts),
        std::to_array(secondInts), std::to_array(thirdInts), std::to_array(fourthInts), firstNumber,
        secondNumber, thirdNumber, fourthNumber, fifthNumber, firstText, secondText);
}

void Annotation::destruct(Annotation * annotation)
{
    delete annotation;
}

Annotation::~Annotation()
{
    leaveStore(&SubPool::m_Annotations, this);
}

} // namespace transl_tk
