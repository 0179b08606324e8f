#include "exchange/records/curve_record.h"

#include "exchange/read_session.h"
#include "exchange/records/placed_body.h"
#include "geom/curve_kinds.h"
#include "geom/proxy_uv_curve.h"

#include <vector>

namespace transl_tk {

namespace {

using namespace geom;

/// Composites inside composites, where a stream holds them, are read down to this depth.
constexpr int DeepestComposite = 64;

using CircleBody = PlacedBody<ProxyCircle, &ProxyCircle::getRadius>;
using EllipseBody =
    PlacedBody<ProxyEllipse, &ProxyEllipse::getFirstRadius, &ProxyEllipse::getSecondRadius>;

struct LineBody
{
    Triple point;
    Triple direction;

    void take(ProxyLine & line)
    {
        double rows[2][3];
        line.getPoint(rows[0]);
        line.getDirection(rows[1]);
        point = std::to_array(rows[0]);
        direction = std::to_array(rows[1]);
    }

    template <class Stream> constexpr void fields(Stream & stream)
    {
        interleavedFields(stream, std::array{&point, &direction});
    }

    ProxyLine * make(Parameterization parameterization) const
    {
        return new ProxyLine(point, direction, std::move(parameterization));
    }
};

template <class Sink> void putMember(Sink & sink, Curve * curve);

template <class Sink> void putBody(Sink & sink, ProxyCircle & curve)
{
    putAs<CircleBody>(sink, curve);
}

template <class Sink> void putBody(Sink & sink, ProxyEllipse & curve)
{
    putAs<EllipseBody>(sink, curve);
}

template <class Sink> void putBody(Sink & sink, ProxyLine & curve)
{
    putAs<LineBody>(sink, curve);
}

template <class Sink> void putBody(Sink & sink, ProxyBSplineCurve & curve)
{
    splineFields(sink, curve.data());
}

template <class Sink> void putBody(Sink & sink, ProxyLineStrip & curve)
{
    sink.counted(curve.points());
}

template <class Sink> void putBody(Sink & sink, ProxyCompositeCurve & curve)
{
    std::size_t count = 0;
    curve.forEachCurve(
        [](Curve *, void * number) {
            ++*static_cast<std::size_t *>(number);
            return true;
        },
        &count);
    sink.count(count);
    curve.forEachCurve(
        [](Curve * member, void * stream) {
            putMember(*static_cast<Sink *>(stream), member);
            return true;
        },
        &sink);
}

int tagOf(Curve * curve)
{
    return curve != nullptr ? curve->getType() : 0;
}

template <class Sink, class Proxy> void putWithParameterization(Sink & sink, Proxy & curve)
{
    parameterizationFields(sink, curve.getParameterization());
    putBody(sink, curve);
}

/// A member of a composite. One that is a composite itself is its tag alone, though the reader
/// expects a body behind the tag: such a model is not to be sent.
template <class Sink> void putMember(Sink & sink, Curve * curve)
{
    sink.i32(tagOf(curve));
    if (curve != nullptr && curve->getType() != Curve::Type::CompositeCurve)
        visitCurve(*curve, [&](auto & kind) { putWithParameterization(sink, kind); });
}

template <class Sink> void putAnyCurve(Sink & sink, Curve * curve)
{
    sink.i32(tagOf(curve));
    if (curve != nullptr)
        visitCurve(*curve, [&](auto & kind) { putWithParameterization(sink, kind); });
}

template <class Body> OwnedCurve readAs(StreamReader & reader, Parameterization parameterization)
{
    Body body;
    body.fields(reader);
    return OwnedCurve(body.make(std::move(parameterization)));
}

OwnedCurve readBSplineCurve(StreamReader & reader, Parameterization parameterization)
{
    SplineData<3> data;
    splineFields(reader, data);
    return OwnedCurve(new ProxyBSplineCurve(std::move(data), std::move(parameterization)));
}

OwnedCurve readLineStrip(StreamReader & reader, Parameterization parameterization)
{
    std::vector<Triple> points;
    reader.counted(points);
    return OwnedCurve(new ProxyLineStrip(std::move(points), std::move(parameterization)));
}

OwnedCurve readCurve(StreamReader & reader, int depth);

OwnedCurve readCompositeCurve(StreamReader & reader, Parameterization parameterization, int depth)
{
    if (depth == DeepestComposite)
        reader.fail("composite curves are nested more than " + std::to_string(DeepestComposite) +
                    " deep");
    constexpr std::size_t SmallestMember = 4;
    std::size_t const count = reader.count(SmallestMember);
    Array<Curve *> members(static_cast<long long>(count));
    for (Curve *& member : members) {
        OwnedCurve curve = readCurve(reader, depth + 1);
        member = curve.get();
        reader.session().ownerless(std::move(curve));
    }
    return OwnedCurve(new ProxyCompositeCurve(std::move(members), std::move(parameterization)));
}

OwnedCurve readCurve(StreamReader & reader, int depth)
{
    int tag = 0;
    reader.i32(tag);
    if (tag < Curve::Type::Circle || tag > Curve::Type::CompositeCurve || tag == 4)
        return nullptr;
    Parameterization parameterization;
    parameterizationFields(reader, parameterization);
    switch (tag) {
    case Curve::Type::Circle:
        return readAs<CircleBody>(reader, std::move(parameterization));
    case Curve::Type::BSplineCurve:
        return readBSplineCurve(reader, std::move(parameterization));
    case Curve::Type::Ellipse:
        return readAs<EllipseBody>(reader, std::move(parameterization));
    case Curve::Type::Line:
        return readAs<LineBody>(reader, std::move(parameterization));
    case Curve::Type::LineStrip:
        return readLineStrip(reader, std::move(parameterization));
    default:
        return readCompositeCurve(reader, std::move(parameterization), depth);
    }
}

} // namespace

void putCurve(SizeCounter & sink, Curve * curve)
{
    putAnyCurve(sink, curve);
}

void putCurve(StreamWriter & sink, Curve * curve)
{
    putAnyCurve(sink, curve);
}

OwnedCurve readCurve(StreamReader & reader)
{
    return readCurve(reader, 0);
}

void putUVCurve(SizeCounter & sink, UVCurve * curve)
{
    if (auto * const kind = own<ProxyUVCurve>(curve))
        splineFields(sink, kind->data());
}

void putUVCurve(StreamWriter & sink, UVCurve * curve)
{
    if (auto * const kind = own<ProxyUVCurve>(curve))
        splineFields(sink, kind->data());
}

OwnedUVCurve readUVCurve(StreamReader & reader)
{
    SplineData<2> data;
    splineFields(reader, data);
    return OwnedUVCurve(new ProxyUVCurve(std::move(data)));
}

} // namespace transl_tk
