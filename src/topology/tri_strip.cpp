#include "model/entity.h"
#include "topology/sphere_facets.h"
#include "topology/tri_strip_data.h"

#include <algorithm>

namespace transl_tk {

namespace {

class ProxyTriStrip final : public TriStrip, public Pooled<ProxyTriStrip>
{
public:
    /// Asks `source` for the data, which is thus made only for an id that is free.
    template <class Source>
    ProxyTriStrip(int id, Source const & source) : TriStrip(id), m_Data(source())
    {}
    ProxyTriStrip(ProxyTriStrip const &) = delete;
    ProxyTriStrip & operator=(ProxyTriStrip const &) = delete;
    ~ProxyTriStrip() override = default;

    int getEntityKind() override { return EntityKindTriStrip; }

    void getData(float *& vertices, unsigned char *& colours, int & vertexCount, float *& normals,
                 int & normalCount, int *& indices, int & indexCount) override
    {
        vertices = m_Data.vertices.data();
        colours = m_Data.colours.data();
        vertexCount = m_Data.vertexCount;
        normals = m_Data.normals.data();
        normalCount = m_Data.normalCount;
        indices = m_Data.indices.data();
        indexCount = m_Data.indexCount;
    }

    bool getStripFlag() override { return m_Data.flag; }

    void setColor(unsigned char const (&colour)[3]) override
    {
        auto & colours = m_Data.colours;
        if (colours.empty())
            colours = geom::Array<unsigned char>(3LL * m_Data.vertexCount);
        for (auto * target = colours.begin(); target != colours.end(); target += 3)
            std::copy_n(colour, 3, target);
    }

private:
    TriStripData m_Data;
};

template <class Source> TriStrip * createFrom(int id, Source const & source)
{
    return createEntity<ProxyTriStrip>(&SubPool::m_TriStrips, id, source);
}

template <class T> geom::Array<T> copied(T const * elements, long long count)
{
    if (elements == nullptr || count < 1)
        return {};
    geom::Array<T> copy(count);
    copy.copyFrom(elements);
    return copy;
}

int countOf(void const * array, int count)
{
    return array != nullptr ? std::max(count, 0) : 0;
}

} // namespace

TriStrip * TriStrip::create(int const & id, float const * vertices, unsigned char const * colours,
                            int const & vertexCount, float const * normals, int const & normalCount,
                            int const * indices, int const & indexCount, bool const & flag)
{
    if (vertices == nullptr || vertexCount < 1)
        return nullptr;
    return createFrom(id, [&] {
        return TriStripData{copied(vertices, 3LL * vertexCount),
                            copied(colours, 3LL * vertexCount),
                            copied(normals, 3LL * normalCount),
                            copied(indices, indexCount),
                            vertexCount,
                            normalCount,
                            indexCount,
                            flag};
    });
}

TriStrip * TriStrip::create(int const & id, double const (&centre)[3], double const & radius,
                            unsigned char const (&colour)[3], TriStrip::Type const & type,
                            bool const & flag)
{
    return createFrom(id, [&] { return sphereFacets(centre, radius, colour, type, flag); });
}

TriStrip * createTriStrip(int id, TriStripData && data)
{
    if (data.vertexCount < 1)
        return nullptr;
    return createFrom(id, [&] { return std::move(data); });
}

TriStripContent contentOf(TriStrip & strip)
{
    TriStripContent content;
    strip.getData(content.vertices, content.colours, content.vertexCount, content.normals,
                  content.normalCount, content.indices, content.indexCount);
    content.vertexCount = countOf(content.vertices, content.vertexCount);
    content.colourCount = countOf(content.colours, content.vertexCount);
    content.normalCount = countOf(content.normals, content.normalCount);
    content.indexCount = countOf(content.indices, content.indexCount);
    return content;
}

void TriStrip::destruct(TriStrip * strip)
{
    delete strip;
}

TriStrip::~TriStrip()
{
    leaveStore(&SubPool::m_TriStrips, this);
}

} // namespace transl_tk
