#ifndef KELD_TESTS_STREAM_GEOMETRY_RECORDS_H
#define KELD_TESTS_STREAM_GEOMETRY_RECORDS_H

#include "support/segments.h"

#include <vector>

/// Records of geometry, put together field by field from the tables of the stream. No code of the
/// library takes part, so they are what a writer must give and a reader must take.
namespace tests::records {

inline ByteString parameters(int form, std::vector<double> const & values)
{
    return ByteString().i32(form).i32(static_cast<int>(values.size())).f64(values);
}

/// The parameterization of every curve here: form 1, one value.
inline ByteString ofCurve()
{
    return parameters(1, {10});
}

/// The parameterizations of every surface here: form 0 with two values, form 2 with one.
inline ByteString ofSurface()
{
    return parameters(0, {20, 21}).raw(parameters(2, {22}));
}

/// Location (1, 2, 3), axes (4, 5, 6) and (7, 8, 9), and their cross product (-3, 6, -3).
inline ByteString placement()
{
    return ByteString().f64({1, 4, 7, -3, 2, 5, 8, 6, 3, 6, 9, -3});
}

inline ByteString circle()
{
    return ByteString().i32(1).raw(ofCurve()).f64({0.5}).raw(placement());
}

/// Degree 2, flags 1 and 0, two points, knots 0 (three times) and 1 (two times).
inline ByteString splineCurve()
{
    ByteString record;
    record.i32(2).raw(ofCurve()).i32(2).u8(1).u8(0).u8(0);
    record.i32(2).f64({1, 2, 3, 4, 5, 6});
    return record.i32(2).f64({0}).i32(3).f64({1}).i32(2);
}

/// As the other one with the flags 0 and 1 and the weights 7 and 8.
inline ByteString rationalSplineCurve()
{
    ByteString record;
    record.i32(2).raw(ofCurve()).i32(2).u8(0).u8(1).u8(1);
    record.i32(2).f64({1, 2, 3, 4, 5, 6}).f64({7, 8});
    return record.i32(2).f64({0}).i32(3).f64({1}).i32(2);
}

inline ByteString ellipse()
{
    return ByteString().i32(3).raw(ofCurve()).f64({0.5, 0.25}).raw(placement());
}

/// Point (1, 2, 3), direction (4, 5, 6).
inline ByteString line()
{
    return ByteString().i32(5).raw(ofCurve()).f64({1, 4, 2, 5, 3, 6});
}

inline ByteString lineStrip()
{
    return ByteString().i32(6).raw(ofCurve()).i32(2).f64({1, 2, 3, 4, 5, 6});
}

/// A line, null, a circle.
inline ByteString composite()
{
    return ByteString().i32(7).raw(ofCurve()).i32(3).raw(line()).i32(0).raw(circle());
}

/// Degree 2, flags 1 and 0, two points, knots as those of the curves.
inline ByteString uvCurve()
{
    ByteString record;
    record.i32(2).u8(1).u8(0).u8(0).i32(2).f64({1, 2, 3, 4});
    return record.i32(2).f64({0}).i32(3).f64({1}).i32(2);
}

inline ByteString rationalUVCurve()
{
    ByteString record;
    record.i32(2).u8(0).u8(1).u8(1).i32(2).f64({1, 2, 3, 4}).f64({7, 8});
    return record.i32(2).f64({0}).i32(3).f64({1}).i32(2);
}

/// What follows the control points of a spline surface here: degrees 2 and 3, flags 1 0 and 0 1,
/// knots 0 (three times) and 1 (two times), and 5 (four times).
inline ByteString splineForms()
{
    ByteString forms;
    forms.i32(2).u8(1).u8(0).i32(2).f64({0}).i32(3).f64({1}).i32(2);
    return forms.i32(3).u8(0).u8(1).i32(1).f64({5}).i32(4);
}

/// One by two points.
inline ByteString splineSurface()
{
    ByteString record;
    record.i32(2).raw(ofSurface()).u8(0).u8(0).i32(1).i32(2).f64({1, 2, 3, 4, 5, 6});
    return record.raw(splineForms());
}

/// The same with the form of a cylinder and the weights 7 and 8.
inline ByteString rationalSplineSurface()
{
    ByteString record;
    record.i32(2).raw(ofSurface()).u8(1).i32(4).u8(1).i32(1).i32(2).f64({1, 2, 3, 4, 5, 6});
    return record.f64({7, 8}).raw(splineForms());
}

inline ByteString cone()
{
    return ByteString().i32(3).raw(ofSurface()).f64({0.5, 0.25}).raw(placement());
}

inline ByteString cylinder()
{
    return ByteString().i32(4).raw(ofSurface()).f64({0.5}).raw(placement());
}

inline ByteString torus()
{
    return ByteString().i32(10).raw(ofSurface()).f64({0.5, 0.25}).raw(placement());
}

inline ByteString sphere()
{
    return ByteString().i32(11).raw(ofSurface()).f64({0.5}).raw(placement());
}

inline ByteString plane()
{
    return ByteString().i32(12).raw(ofSurface()).raw(placement());
}

inline ByteString offset(ByteString const & base, double distance)
{
    return ByteString().i32(5).raw(ofSurface()).raw(base).f64({distance});
}

/// Axis point (1, 2, 3), axis direction (4, 5, 6).
inline ByteString revolution(ByteString const & meridian)
{
    return ByteString().i32(7).raw(ofSurface()).raw(meridian).f64({1, 4, 2, 5, 3, 6});
}

inline ByteString ruled(ByteString const & first, ByteString const & second)
{
    return ByteString().i32(8).raw(ofSurface()).raw(first).raw(second);
}

/// Direction (1, 2, 3).
inline ByteString extrusion(ByteString const & profile)
{
    return ByteString().i32(9).raw(ofSurface()).raw(profile).f64({1, 2, 3});
}

/// A shape that is not there, or one of a kind that nobody knows.
inline ByteString tag(int number)
{
    return ByteString().i32(number);
}

/// The bytes of a model that holds the records of one section and nothing else.
inline Bytes model(int section, std::vector<ByteString> const & records)
{
    ByteString stream;
    stream.zeros(4 * static_cast<std::size_t>(section - 1));
    stream.i32(static_cast<int>(records.size()));
    for (ByteString const & record : records)
        stream.raw(record);
    return stream.zeros(4 * static_cast<std::size_t>(27 - section)).bytes();
}

/// A record of an entity that carries a shape.
inline ByteString carried(int id, ByteString const & shape)
{
    return ByteString().i32(id).raw(shape);
}

inline std::vector<ByteString> everyCurve()
{
    return {circle(),    splineCurve(), rationalSplineCurve(), ellipse(), line(),
            lineStrip(), composite()};
}

inline std::vector<ByteString> everySurface()
{
    return {splineSurface(),
            rationalSplineSurface(),
            cone(),
            cylinder(),
            offset(offset(plane(), 2), 3),
            revolution(circle()),
            ruled(line(), composite()),
            extrusion(splineCurve()),
            torus(),
            sphere(),
            plane()};
}

} // namespace tests::records

#endif
