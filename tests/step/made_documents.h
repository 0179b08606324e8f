#ifndef KELD_TESTS_STEP_MADE_DOCUMENTS_H
#define KELD_TESTS_STEP_MADE_DOCUMENTS_H

#include <Standard_Handle.hxx>
#include <TDF_Label.hxx>
#include <string>

class TDocStd_Document;
class TopoDS_Shape;

namespace tests {

// STEP files that the tests make with the kernel, from documents.

opencascade::handle<TDocStd_Document> newDocument();

/// Writes all of `document` as AP242, in millimetres.
void writeStep(opencascade::handle<TDocStd_Document> const & document, std::string const & path);

/// Writes `shape` as one part.
void writeShape(TopoDS_Shape const & shape, std::string const & path);

/// Gives a product or a component its name.
TDF_Label named(TDF_Label const & label, char const * name);

/// "plant" holds "line 1" and "line 2", places of "line", which holds "cell 1" and "cell 2", places
/// of "cell", which holds "robot 1" and "robot 2", places of a part. The first
/// robot in the second cell of the first line has green surfaces, the whole first cell of the
/// second line is blue, for surfaces and for curves, and the second robot in the second cell of the
/// second line has red surfaces.
void writePlant(std::string const & path);

/// A red part "block" of 10 by 20 by 30 millimetres, in the layer "base", with one face in the
/// layer "painted". Its material is "steel", "cold drawn", of the density 7.85; it claims an area
/// of 2200.5, a volume of 6000.25 and a centroid at (5, 10, 15.5), none of which is right.
void writeBlock(std::string const & path);

/// Puts `to` in the place of each `from` in the file `path`; a test failure where there is none.
void replaceInFile(std::string const & path, std::string const & from, std::string const & to);

} // namespace tests

#endif
