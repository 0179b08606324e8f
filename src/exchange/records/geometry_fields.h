#ifndef KELD_TRANSL_EXCHANGE_RECORDS_GEOMETRY_FIELDS_H
#define KELD_TRANSL_EXCHANGE_RECORDS_GEOMETRY_FIELDS_H

#include "exchange/size_counter.h"
#include "geom/placement.h"
#include "geom/spline_data.h"

#include <keld-transl/geom/parameterization.h>

#include <array>
#include <cstddef>

/// The fields that the records of curves and surfaces have in common. Each list of fields serves a
/// `SizeCounter`, a `StreamWriter` and a `StreamReader`; the first two leave the values as they
/// are.
namespace transl_tk {

/// An enumeration of 32 bits, carried as a number.
template <class Stream, class Enumeration> void enumField(Stream & stream, Enumeration & value)
{
    int number = value;
    stream.i32(number);
    if constexpr (Stream::Reads)
        value = static_cast<Enumeration>(number);
}

/// Triples row by row: the x components of all of them, then the y components, then the z
/// components.
template <class Stream, std::size_t Count>
constexpr void interleavedFields(Stream & stream, std::array<geom::Triple *, Count> const & triples)
{
    std::array<double, 3 * Count> rows;
    if constexpr (!Stream::Reads)
        for (std::size_t i = 0; i < rows.size(); ++i)
            rows[i] = (*triples[i % Count])[i / Count];
    stream.f64(rows);
    if constexpr (Stream::Reads)
        for (std::size_t i = 0; i < rows.size(); ++i)
            (*triples[i % Count])[i / Count] = rows[i];
}

/// An axis frame, 96 bytes.
template <class Stream> constexpr void placementFields(Stream & stream, geom::Placement & placement)
{
    interleavedFields(stream, std::array{&placement.location, &placement.first, &placement.second,
                                         &placement.third});
}

template <class Stream, class Values>
void parameterizationFields(Stream & stream, Values & parameterization)
{
    enumField(stream, parameterization.m_Form);
    stream.counted(parameterization.m_Values);
}

/// Puts a body that has the same size in every shape of its kind: takes its fields from the shape
/// when they are written, and does not look at them when they are counted.
template <class Body, class Sink, class Proxy> void putAs(Sink & sink, Proxy & shape)
{
    if constexpr (Sink::CountsOnly) {
        sink.records(1, fixedSizeOf<Body>());
    } else {
        Body body;
        body.take(shape);
        body.fields(sink);
    }
}

/// A knot and its multiplicity, as they stand in the stream without a gap.
constexpr std::size_t KnotSize = 12;

template <class Sink> void knotFields(Sink & sink, geom::Knots const & knots)
{
    sink.count(knots.size());
    if constexpr (Sink::CountsOnly) {
        sink.records(knots.size(), KnotSize);
    } else {
        for (std::size_t i = 0; i < knots.size(); ++i) {
            sink.f64(knots.values()[i]);
            sink.i32(knots.multiplicities()[i]);
        }
    }
}

template <class Reader>
requires Reader::Reads void knotFields(Reader & reader, geom::Knots & knots)
{
    knots = geom::Knots(static_cast<long long>(reader.count(KnotSize)));
    for (std::size_t i = 0; i < knots.size(); ++i) {
        reader.f64(knots.values()[i]);
        reader.i32(knots.multiplicities()[i]);
    }
}

template <class Stream, class Form> void splineFormFields(Stream & stream, Form & form)
{
    stream.i32(form.degree);
    stream.u8(form.flagA);
    stream.u8(form.flagB);
}

/// The body of a spline curve, in space or in parameter space. The knots stand behind the points,
/// apart from the rest of the form.
template <class Stream, class Data> void splineFields(Stream & stream, Data & data)
{
    splineFormFields(stream, data.form);
    bool isRational = !data.weights.empty();
    stream.u8(isRational);
    stream.counted(data.points);
    if (isRational)
        stream.elements(data.weights, data.points.size());
    knotFields(stream, data.form.knots);
}

} // namespace transl_tk

#endif
