#include "exchange/records/surface_record.h"

#include "exchange/read_session.h"
#include "exchange/records/curve_record.h"
#include "exchange/records/placed_body.h"
#include "geom/surface_kinds.h"

#include <concepts>
#include <vector>

namespace transl_tk {

namespace {

using namespace geom;

using PlaneBody = PlacedBody<ProxyPlane>;
using CylinderBody = PlacedBody<ProxyCylinder, &ProxyCylinder::getRadius>;
using SphereBody = PlacedBody<ProxySphere, &ProxySphere::getRadius>;
using ConeBody = PlacedBody<ProxyCone, &ProxyCone::getRadius, &ProxyCone::getAngle>;
using TorusBody = PlacedBody<ProxyTorus, &ProxyTorus::getFirstRadius, &ProxyTorus::getSecondRadius>;

struct Parameterizations
{
    Parameterization u;
    Parameterization v;
};

/// The form is written only where it is not the usual one.
template <class Stream> void surfaceFormFields(Stream & stream, Surface::Type & form)
{
    bool hasForm = form != Surface::Type::BSpline;
    stream.u8(hasForm);
    if (hasForm)
        enumField(stream, form);
}

/// How many points the counts of a surface make. The product of two counts, in 64 bits, may be
/// positive though both are negative.
template <class Data> long long pointCountOf(Data const & data)
{
    return static_cast<long long>(data.pointCountU) * data.pointCountV;
}

template <class Stream, class Data> void pointFields(Stream & stream, Data & data, bool isRational)
{
    stream.i32(data.pointCountU);
    stream.i32(data.pointCountV);
    long long const count = pointCountOf(data);
    if constexpr (Stream::Reads)
        if (count < 0)
            stream.fail("there cannot be " + std::to_string(data.pointCountU) + " by " +
                        std::to_string(data.pointCountV) + " control points");
    stream.elements(data.points, static_cast<std::size_t>(count));
    if (isRational)
        stream.elements(data.weights, static_cast<std::size_t>(count));
}

template <class Stream, class Data>
void splineSurfaceFields(Stream & stream, Surface::Type & form, Data & data)
{
    surfaceFormFields(stream, form);
    bool isRational = !data.weights.empty();
    stream.u8(isRational);
    pointFields(stream, data, isRational);
    splineFormFields(stream, data.formU);
    knotFields(stream, data.formU.knots);
    splineFormFields(stream, data.formV);
    knotFields(stream, data.formV.knots);
}

template <class Sink> void putBody(Sink & sink, ProxyPlane & surface)
{
    putAs<PlaneBody>(sink, surface);
}

template <class Sink> void putBody(Sink & sink, ProxyCylinder & surface)
{
    putAs<CylinderBody>(sink, surface);
}

template <class Sink> void putBody(Sink & sink, ProxySphere & surface)
{
    putAs<SphereBody>(sink, surface);
}

template <class Sink> void putBody(Sink & sink, ProxyCone & surface)
{
    putAs<ConeBody>(sink, surface);
}

template <class Sink> void putBody(Sink & sink, ProxyTorus & surface)
{
    putAs<TorusBody>(sink, surface);
}

template <class Sink> void putBody(Sink & sink, ProxyBSplineSurface & surface)
{
    Surface::Type form = surface.getSurfaceForm();
    splineSurfaceFields(sink, form, surface.data());
}

template <class Sink> void putBody(Sink & sink, ProxySurfaceOfRevolution & surface)
{
    putCurve(sink, surface.getCurve());
    double rows[2][3];
    surface.getAxisPoint(rows[0]);
    surface.getAxisDirection(rows[1]);
    Triple point = std::to_array(rows[0]);
    Triple direction = std::to_array(rows[1]);
    interleavedFields(sink, std::array{&point, &direction});
}

template <class Sink> void putBody(Sink & sink, ProxyRuledSurface & surface)
{
    putCurve(sink, surface.getFirstCurve());
    putCurve(sink, surface.getSecondCurve());
}

template <class Sink> void putBody(Sink & sink, ProxySurfaceOfLinearExtrusion & surface)
{
    putCurve(sink, surface.getCurve());
    double direction[3];
    surface.getDirection(direction);
    sink.f64(direction);
}

/// Offsets of offsets may nest deeper than the stack is. The base stands between an offset's
/// parameterizations and its distance, so the distances follow the last base in reverse.
template <class Sink> void putAnySurface(Sink & sink, Surface * surface)
{
    std::vector<double> distances;
    for (bool isOffset = true; isOffset;) {
        isOffset = false;
        if (surface == nullptr) {
            sink.i32(0);
            break;
        }
        sink.i32(surface->getType());
        visitSurface(*surface, [&](auto & kind) {
            parameterizationFields(sink, kind.getParameterizationU());
            parameterizationFields(sink, kind.getParameterizationV());
            if constexpr (std::same_as<decltype(kind), ProxyOffsetSurface &>) {
                distances.push_back(kind.getDistance());
                surface = kind.getBaseSurface();
                isOffset = true;
            } else {
                putBody(sink, kind);
            }
        });
    }
    for (; !distances.empty(); distances.pop_back())
        sink.f64(distances.back());
}

template <class Body> OwnedSurface readAs(StreamReader & reader, Parameterizations values)
{
    Body body;
    body.fields(reader);
    return OwnedSurface(body.make(std::move(values.u), std::move(values.v)));
}

OwnedSurface readBSplineSurface(StreamReader & reader, Parameterizations values)
{
    Surface::Type form = Surface::Type::BSpline;
    SplineSurfaceData data;
    splineSurfaceFields(reader, form, data);
    return OwnedSurface(
        new ProxyBSplineSurface(std::move(data), form, std::move(values.u), std::move(values.v)));
}

OwnedSurface readSurfaceOfRevolution(StreamReader & reader, Parameterizations values)
{
    OwnedCurve curve = readCurve(reader);
    Triple point;
    Triple direction;
    interleavedFields(reader, std::array{&point, &direction});
    OwnedSurface surface(new ProxySurfaceOfRevolution(point, direction, curve.get(),
                                                      std::move(values.u), std::move(values.v)));
    curve.release();
    return surface;
}

OwnedSurface readRuledSurface(StreamReader & reader, Parameterizations values)
{
    OwnedCurve first = readCurve(reader);
    OwnedCurve second = readCurve(reader);
    OwnedSurface surface(
        new ProxyRuledSurface(first.get(), second.get(), std::move(values.u), std::move(values.v)));
    first.release();
    second.release();
    return surface;
}

OwnedSurface readSurfaceOfLinearExtrusion(StreamReader & reader, Parameterizations values)
{
    OwnedCurve curve = readCurve(reader);
    Triple direction;
    reader.f64(direction);
    OwnedSurface surface(new ProxySurfaceOfLinearExtrusion(
        curve.get(), direction, std::move(values.u), std::move(values.v)));
    curve.release();
    return surface;
}

/// The surface of a tag that is not the one of an offset; null for the tag of no kind.
OwnedSurface readKind(StreamReader & reader, int tag)
{
    using Read = OwnedSurface (*)(StreamReader &, Parameterizations);
    constexpr std::array<Read, 13> Readers = {nullptr,
                                              nullptr,
                                              readBSplineSurface,
                                              readAs<ConeBody>,
                                              readAs<CylinderBody>,
                                              nullptr,
                                              nullptr,
                                              readSurfaceOfRevolution,
                                              readRuledSurface,
                                              readSurfaceOfLinearExtrusion,
                                              readAs<TorusBody>,
                                              readAs<SphereBody>,
                                              readAs<PlaneBody>};
    if (tag < 0 || tag >= static_cast<int>(Readers.size()))
        return nullptr;
    Read const read = Readers[static_cast<std::size_t>(tag)];
    if (read == nullptr)
        return nullptr;
    Parameterizations values;
    parameterizationFields(reader, values.u);
    parameterizationFields(reader, values.v);
    return read(reader, std::move(values));
}

} // namespace

void putSurface(SizeCounter & sink, Surface * surface)
{
    putAnySurface(sink, surface);
}

void putSurface(StreamWriter & sink, Surface * surface)
{
    putAnySurface(sink, surface);
}

OwnedSurface readSurface(StreamReader & reader)
{
    std::vector<Parameterizations> offsets;
    int tag = 0;
    for (reader.i32(tag); tag == Surface::Type::Offset; reader.i32(tag)) {
        parameterizationFields(reader, offsets.emplace_back().u);
        parameterizationFields(reader, offsets.back().v);
    }
    OwnedSurface surface = readKind(reader, tag);
    for (; !offsets.empty(); offsets.pop_back()) {
        double distance = 0;
        reader.f64(distance);
        Surface * const base = surface.get();
        reader.session().ownerless(std::move(surface));
        surface.reset(new ProxyOffsetSurface(base, distance, std::move(offsets.back().u),
                                             std::move(offsets.back().v)));
    }
    return surface;
}

} // namespace transl_tk
