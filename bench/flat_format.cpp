#include "geometry_models.h"
#include "spline_formats.h"

namespace bench {

namespace {

/// Gives a builder the segment as its buffer. The size suffices, so that it never asks again.
class SegmentAllocator : public flatbuffers::Allocator
{
public:
    explicit SegmentAllocator(void * segment) : m_Segment(static_cast<std::uint8_t *>(segment)) {}

    std::uint8_t * allocate(std::size_t) override { return m_Segment; }
    void deallocate(std::uint8_t *, std::size_t) override {}

private:
    std::uint8_t * m_Segment;
};

/// The scratch space that a builder needs beside the finished bytes.
constexpr std::size_t Scratch = 4096;

flat::SplineFormT formOf(double const (&knots)[SplineValues::KnotCount],
                         int const (&multiplicities)[SplineValues::KnotCount])
{
    flat::SplineFormT form;
    form.degree = SplineValues::Degree;
    form.knots.assign(std::begin(knots), std::end(knots));
    form.multiplicities.assign(std::begin(multiplicities), std::end(multiplicities));
    return form;
}

} // namespace

FlatFormat::Objects FlatFormat::objects()
{
    auto model = std::make_unique<flat::ModelT>();
    for (SplineValues const & v : splineValues()) {
        auto surface = std::make_unique<flat::SplineSurfaceT>();
        surface->id = v.id;
        surface->surface_form = 2;
        surface->parameterization_u = std::make_unique<flat::ParameterizationT>();
        surface->parameterization_v = std::make_unique<flat::ParameterizationT>();
        surface->form_u = std::make_unique<flat::SplineFormT>(formOf(v.knotsU, v.multiplicitiesU));
        surface->form_v = std::make_unique<flat::SplineFormT>(formOf(v.knotsV, v.multiplicitiesV));
        surface->point_count_u = SplineValues::PointsADirection;
        surface->point_count_v = SplineValues::PointsADirection;
        surface->points.assign(std::begin(v.points), std::end(v.points));
        surface->weights.assign(std::begin(v.weights), std::end(v.weights));
        model->surfaces.push_back(std::move(surface));
    }
    return model;
}

std::size_t FlatFormat::segmentSize(Objects const & objects)
{
    flatbuffers::FlatBufferBuilder builder;
    builder.Finish(flat::CreateModel(builder, objects.get()));
    return (builder.GetSize() + 2 * Scratch) / Scratch * Scratch;
}

void FlatFormat::write(Objects const & objects, void * segment, std::size_t size)
{
    SegmentAllocator allocator(segment);
    flatbuffers::FlatBufferBuilder builder(size, &allocator);
    builder.Finish(flat::CreateModel(builder, objects.get()));
    // The bytes end with the segment; where they begin goes to its front.
    auto const start =
        static_cast<std::size_t>(builder.GetBufferPointer() - static_cast<std::uint8_t *>(segment));
    std::memcpy(segment, &start, sizeof start);
}

FlatFormat::Objects FlatFormat::read(void const * segment, std::size_t)
{
    std::size_t start = 0;
    std::memcpy(&start, segment, sizeof start);
    return flat::UnPackModel(static_cast<std::uint8_t const *>(segment) + start);
}

bool FlatFormat::equal(Objects const & a, Objects const & b)
{
    return *a == *b;
}

} // namespace bench
