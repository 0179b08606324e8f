#ifndef KELD_STEP_IMPORT_DOCUMENT_H
#define KELD_STEP_IMPORT_DOCUMENT_H

#include "coverage.h"
#include "import/file_kind.h"

#include <keld-transl/product/units.h>

#include <TDF_Label.hxx>
#include <TDocStd_Document.hxx>
#include <functional>
#include <set>
#include <string>
#include <utility>
#include <vector>

class TopoDS_Shape;
class TopoDS_TShape;

namespace translator_kit {
class Run;
}

namespace step {

/// What a STEP file says about a product.
struct Product
{
    TDF_Label label;
    std::string id;
    std::string description;
};

/// A file, as the kernel has read it: its structure, shapes, names, colours, layers, materials.
/// Lengths are millimetres, whatever the file's unit is.
struct Document
{
    Handle(TDocStd_Document) content;
    transl_tk::Units::LengthType lengthUnit = transl_tk::Units::Millimetre;
    std::string unitName; ///< the file's own word for its unit, empty when it has none
    std::vector<std::pair<std::string, std::string>> header;
    std::vector<Product> products;
    /// Words for the entity of the file that a shape was made from, such as "#12"; may be empty.
    std::function<std::string(TopoDS_Shape const &)> entityOf;
    /// The same of a face, at the cost of a look-up; may give nothing, and may be empty itself.
    std::function<std::string(TopoDS_Shape const &)> faceEntityOf;
    /// Contents of faces that lack a boundary which the file has.
    std::set<TopoDS_TShape const *> openFaces;
};

/// Reads the file `path`. Entities that the kernel cannot read are counted as lost. Progress of the
/// run ends at 60 percent. Throws `Failure` for a file that gives nothing.
Document readDocument(std::string const & path, FileKind kind, translator_kit::Run & run,
                      Coverage & coverage);

/// An empty document.
Handle(TDocStd_Document) newDocument();

Document readStep(std::string const & path, translator_kit::Run & run, Coverage & coverage);
Document readIges(std::string const & path, translator_kit::Run & run, Coverage & coverage);
Document readBrep(std::string const & path, bool binary, translator_kit::Run & run);

/// Where the kernel's transfer lies in the whole run.
constexpr int TransferStart = 20;
constexpr int TransferEnd = 60;

} // namespace step

#endif
