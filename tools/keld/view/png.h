#ifndef KELD_TOOLS_VIEW_PNG_H
#define KELD_TOOLS_VIEW_PNG_H

#include "view/raster.h"

#include <string>

namespace keld::view {

/// The bytes of a PNG file. Throws std::runtime_error with a sentence.
std::string pngOf(Image const & image);

} // namespace keld::view

#endif
