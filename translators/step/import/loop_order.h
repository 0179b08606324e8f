#ifndef KELD_STEP_IMPORT_LOOP_ORDER_H
#define KELD_STEP_IMPORT_LOOP_ORDER_H

#include <TopoDS_Shape.hxx>
#include <vector>

class TopoDS_Face;
class TopoDS_Wire;

namespace step {

/// The edges of a wire, each with its orientation in `face`, so that each begins where the one
/// before it ends. In the order of the file where no such order exists.
std::vector<TopoDS_Shape> edgesInOrder(TopoDS_Wire const & wire, TopoDS_Face const & face);

} // namespace step

#endif
