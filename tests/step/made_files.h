#ifndef KELD_TESTS_STEP_MADE_FILES_H
#define KELD_TESTS_STEP_MADE_FILES_H

#include <TopoDS_Shape.hxx>
#include <string>

namespace tests {

// Files that the tests make with the kernel.

/// All bytes of the file `path`.
std::string contentOf(std::string const & path);

void writeBrep(TopoDS_Shape const & shape, std::string const & path);

/// An assembly "rig" of two plates, the second one moved and turned, and of an assembly "pair" that
/// holds two bolts. The plate is red with one green face, and in the layer "base"; the first
/// instance of "pair" is blue. The file's unit is the inch; a plate is 40 by 30 by 5 millimetres, a
/// bolt has a radius of 3 and a height of 20.
void writeRig(std::string const & path);

/// Solids and sheets with every kind of curve and surface that the kernel has.
TopoDS_Shape seamedCylinder();
TopoDS_Shape sphere();
TopoDS_Shape torus();
TopoDS_Shape coneWithHyperbola();
TopoDS_Shape parabolicPrism();
TopoDS_Shape bezierPatch();
TopoDS_Shape offsetPatch();
TopoDS_Shape extrudedSpline();
TopoDS_Shape revolvedSpline();
TopoDS_Shape ellipticPrism();
/// A box of 10 by 20 by 30 millimetres around a hollow of 4 by 4 by 4.
TopoDS_Shape boxWithVoid();
/// A box of 10 by 20 by 30 millimetres whose faces look inward: a solid of a negative volume.
TopoDS_Shape insideOutBox();
/// Two boxes side by side.
TopoDS_Shape twoSolids();
/// Neither of them belongs to a face.
TopoDS_Shape edgeAndPoint();
TopoDS_Shape mirrored(TopoDS_Shape const & shape);

} // namespace tests

#endif
