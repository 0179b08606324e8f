#ifndef KELD_STEP_IMPORT_PRESENTATION_H
#define KELD_STEP_IMPORT_PRESENTATION_H

#include <vector>

class TopoDS_Shape;

namespace step {

/// Lines that a text or a dimension is drawn with.
struct Presentation
{
    std::vector<double> points; ///< three coordinates a point, one line behind the other
    std::vector<int> lengths;   ///< how many points each line has
    bool isExact = true;        ///< false where a curve became a line of several points
    bool isWhole = true;        ///< false where something has no form as a line
};

/// Edges that follow each other become one line.
Presentation presentationFrom(TopoDS_Shape const & shape);

} // namespace step

#endif
