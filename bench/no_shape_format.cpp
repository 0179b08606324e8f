// Stands in for the shapes of Open CASCADE where that library is not installed.

#include "shape_format.h"

namespace bench {

bool const ShapeFormat::IsThere = false;

struct ShapeFormat::Content
{};

ShapeFormat::ShapeFormat() = default;

ShapeFormat::ShapeFormat(QuadNet const &) {}

ShapeFormat::~ShapeFormat() = default;

bool ShapeFormat::write(char const *) const
{
    return false;
}

bool ShapeFormat::read(char const *)
{
    return false;
}

int ShapeFormat::faces() const
{
    return 0;
}

} // namespace bench
