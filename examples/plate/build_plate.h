#ifndef KELD_EXAMPLES_PLATE_BUILD_PLATE_H
#define KELD_EXAMPLES_PLATE_BUILD_PLATE_H

namespace plate {

/// Makes the geometry of a drilled, filleted plate in the current sub-pool.
///
/// The plate is 120 x 80 x 10 mm, with corners rounded by 12 mm, its upper edge filleted by 2 mm,
/// and a hole of diameter 9 mm at each corner. It stands on the plane z = 0, centred on the origin.
/// A groove in its upper face follows a spline.
void buildPlate();

} // namespace plate

#endif
