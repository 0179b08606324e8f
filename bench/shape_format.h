#ifndef KELD_BENCH_SHAPE_FORMAT_H
#define KELD_BENCH_SHAPE_FORMAT_H

#include "topology_models.h"

#include <memory>

namespace bench {

/// A shape of Open CASCADE in its binary format, where that library is installed.
class ShapeFormat
{
public:
    static bool const IsThere;

    /// No shape.
    ShapeFormat();
    /// The same faces, edges and vertices as in the net, shared in the same way.
    explicit ShapeFormat(QuadNet const & net);
    ShapeFormat(ShapeFormat const &) = delete;
    ShapeFormat & operator=(ShapeFormat const &) = delete;
    ~ShapeFormat();

    bool write(char const * path) const;
    bool read(char const * path);
    int faces() const;

private:
    struct Content;

    std::unique_ptr<Content> m_Content;
};

} // namespace bench

#endif
