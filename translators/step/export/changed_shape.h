#ifndef KELD_STEP_EXPORT_CHANGED_SHAPE_H
#define KELD_STEP_EXPORT_CHANGED_SHAPE_H

#include <BRepBuilderAPI_GTransform.hxx>
#include <BRepBuilderAPI_Transform.hxx>
#include <gp_Mat.hxx>
#include <string>

namespace step {

/// A word for what `map` does with a shape, such as "mirrored".
std::string wordsOf(gp_Mat const & map);

/// A shape that was mirrored, scaled or distorted about the origin.
class ChangedShape
{
public:
    ChangedShape(TopoDS_Shape const & shape, gp_Mat const & map);

    TopoDS_Shape whole() { return maker().Shape(); }

    /// What `shape`, which stands in the shape that was changed, has become.
    TopoDS_Shape of(TopoDS_Shape const & shape) { return maker().ModifiedShape(shape); }

private:
    BRepBuilderAPI_ModifyShape & maker();

    bool m_IsUniform;
    BRepBuilderAPI_Transform m_Uniform;
    BRepBuilderAPI_GTransform m_Any;
};

} // namespace step

#endif
