#include "export/changed_shape.h"

#include <gp_GTrsf.hxx>
#include <gp_Trsf.hxx>

namespace step {

namespace {

gp_Mat identity()
{
    gp_Mat result;
    result.SetIdentity();
    return result;
}

bool isMultipleOfIdentity(gp_Mat const & map)
{
    gp_Mat const difference = map - identity().Multiplied(map(1, 1));
    for (int row = 1; row <= 3; ++row) {
        for (int column = 1; column <= 3; ++column) {
            if (difference(row, column) != 0)
                return false;
        }
    }
    return true;
}

gp_Trsf scaling(double factor)
{
    gp_Trsf result;
    result.SetScale({0, 0, 0}, factor);
    return result;
}

} // namespace

std::string wordsOf(gp_Mat const & map)
{
    if (!isMultipleOfIdentity(map))
        return "distorted";
    return map(1, 1) == -1 ? "mirrored" : map(1, 1) < 0 ? "mirrored and scaled" : "scaled";
}

ChangedShape::ChangedShape(TopoDS_Shape const & shape, gp_Mat const & map)
    : m_IsUniform(isMultipleOfIdentity(map)),
      m_Uniform(m_IsUniform ? scaling(map(1, 1)) : gp_Trsf()), m_Any(gp_GTrsf(map, {0, 0, 0}))
{
    if (m_IsUniform)
        m_Uniform.Perform(shape, true);
    else
        m_Any.Perform(shape, true);
}

BRepBuilderAPI_ModifyShape & ChangedShape::maker()
{
    if (m_IsUniform)
        return m_Uniform;
    return m_Any;
}

} // namespace step
