#ifndef STEP_ASSEMBLY_VISE_H
#define STEP_ASSEMBLY_VISE_H

#include "parts.h"

#include <TDocStd_Document.hxx>
#include <vector>

namespace vise {

/// A document of the kernel, and what its writer has to be told beside it.
struct Drawing
{
    Handle(TDocStd_Document) document;
    std::vector<OffsetEdge> offsetEdges;
};

/// `copies` vises, each of parts of its own. One stands alone; more of them stand on a table side
/// by side, below one more assembly. Throws BuildFailure.
Drawing drawVises(int copies);

} // namespace vise

#endif
