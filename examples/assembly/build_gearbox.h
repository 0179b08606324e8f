#ifndef KELD_EXAMPLES_ASSEMBLY_BUILD_GEARBOX_H
#define KELD_EXAMPLES_ASSEMBLY_BUILD_GEARBOX_H

#include <keld-transl/product/assembly.h>

namespace assembly {

/// What an entry of the report is. The numbers are those that `keld import` shows as information,
/// warning and error.
enum EntryMeaning : int { Information = 0, Warning = 1, Error = 2 };

/// Makes a small gearbox in the current sub-pool and returns its top assembly: three levels, parts
/// that are placed several times, units, colours, product data, a comment, a parameter tree, an
/// annotation and two entries of the report.
transl_tk::Assembly * buildGearbox();

} // namespace assembly

#endif
