#include "geometry_models.h"
#include "spline_formats.h"

#include <capnp/any.h>
#include <capnp/message.h>
#include <cstring>
#include <spline_model.capnp.h>

namespace bench {

namespace {

constexpr std::size_t Word = sizeof(capnp::word);

CapnFormat::SplineForm formOf(double const (&knots)[SplineValues::KnotCount],
                              int const (&multiplicities)[SplineValues::KnotCount])
{
    CapnFormat::SplineForm form;
    form.degree = SplineValues::Degree;
    form.knots.assign(std::begin(knots), std::end(knots));
    form.multiplicities.assign(std::begin(multiplicities), std::end(multiplicities));
    return form;
}

template <class T> kj::ArrayPtr<T const> arrayOf(std::vector<T> const & values)
{
    return {values.data(), values.size()};
}

void put(capn::Parameterization::Builder target, CapnFormat::Parameterization const & source)
{
    target.setForm(source.form);
    target.setValues(arrayOf(source.values));
}

void put(capn::SplineForm::Builder target, CapnFormat::SplineForm const & source)
{
    target.setDegree(source.degree);
    target.setFlagA(source.flagA);
    target.setFlagB(source.flagB);
    target.setKnots(arrayOf(source.knots));
    target.setMultiplicities(arrayOf(source.multiplicities));
}

void put(capn::SplineSurface::Builder target, CapnFormat::SplineSurface const & source)
{
    target.setId(source.id);
    target.setSurfaceForm(source.surfaceForm);
    put(target.initParameterizationU(), source.parameterizationU);
    put(target.initParameterizationV(), source.parameterizationV);
    put(target.initFormU(), source.formU);
    put(target.initFormV(), source.formV);
    target.setPointCountU(source.pointCountU);
    target.setPointCountV(source.pointCountV);
    target.setPoints(arrayOf(source.points));
    target.setWeights(arrayOf(source.weights));
}

void put(capnp::MessageBuilder & message, CapnFormat::Objects const & objects)
{
    auto surfaces =
        message.initRoot<capn::Model>().initSurfaces(static_cast<unsigned int>(objects.size()));
    unsigned int i = 0;
    for (CapnFormat::SplineSurface const & surface : objects)
        put(surfaces[i++], surface);
}

template <class T, class List> void take(std::vector<T> & target, List const & source)
{
    // The bytes of a list of numbers are the numbers; one copy beats a loop over the elements.
    auto const bytes = capnp::AnyList::Reader(source).getRawBytes();
    target.resize(source.size());
    if (bytes.size() != 0)
        std::memcpy(target.data(), bytes.begin(), bytes.size());
}

void take(CapnFormat::Parameterization & target, capn::Parameterization::Reader source)
{
    target.form = source.getForm();
    take(target.values, source.getValues());
}

void take(CapnFormat::SplineForm & target, capn::SplineForm::Reader source)
{
    target.degree = source.getDegree();
    target.flagA = source.getFlagA();
    target.flagB = source.getFlagB();
    take(target.knots, source.getKnots());
    take(target.multiplicities, source.getMultiplicities());
}

void take(CapnFormat::SplineSurface & target, capn::SplineSurface::Reader source)
{
    target.id = source.getId();
    target.surfaceForm = source.getSurfaceForm();
    take(target.parameterizationU, source.getParameterizationU());
    take(target.parameterizationV, source.getParameterizationV());
    take(target.formU, source.getFormU());
    take(target.formV, source.getFormV());
    target.pointCountU = source.getPointCountU();
    target.pointCountV = source.getPointCountV();
    take(target.points, source.getPoints());
    take(target.weights, source.getWeights());
}

} // namespace

CapnFormat::Objects CapnFormat::objects()
{
    Objects objects;
    objects.reserve(SplineCount);
    for (SplineValues const & v : splineValues()) {
        SplineSurface & surface = objects.emplace_back();
        surface.id = v.id;
        surface.surfaceForm = 2;
        surface.formU = formOf(v.knotsU, v.multiplicitiesU);
        surface.formV = formOf(v.knotsV, v.multiplicitiesV);
        surface.pointCountU = SplineValues::PointsADirection;
        surface.pointCountV = SplineValues::PointsADirection;
        surface.points.assign(std::begin(v.points), std::end(v.points));
        surface.weights.assign(std::begin(v.weights), std::end(v.weights));
    }
    return objects;
}

std::size_t CapnFormat::segmentSize(Objects const & objects)
{
    capnp::MallocMessageBuilder message;
    put(message, objects);
    // A single segment needs no more: the far pointers between several fall away.
    return message.sizeInWords() * Word;
}

void CapnFormat::write(Objects const & objects, void * segment, std::size_t size)
{
    capnp::FlatMessageBuilder message({static_cast<capnp::word *>(segment), size / Word});
    put(message, objects);
}

CapnFormat::Objects CapnFormat::read(void const * segment, std::size_t size)
{
    kj::ArrayPtr<capnp::word const> const words(static_cast<capnp::word const *>(segment),
                                                size / Word);
    capnp::ReaderOptions unlimited;
    unlimited.traversalLimitInWords = words.size() * 2;
    capnp::SegmentArrayMessageReader message(kj::arrayPtr(&words, 1), unlimited);
    auto const surfaces = message.getRoot<capn::Model>().getSurfaces();
    Objects objects(surfaces.size());
    unsigned int i = 0;
    for (SplineSurface & surface : objects)
        take(surface, surfaces[i++]);
    return objects;
}

} // namespace bench
