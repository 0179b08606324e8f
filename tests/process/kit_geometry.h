#ifndef KELD_TESTS_KIT_GEOMETRY_H
#define KELD_TESTS_KIT_GEOMETRY_H

namespace tests {

/// Makes carriers in the current sub-pool, of each kind of shape another number of them: 1 line, 2
/// circles, 3 ellipses, 4 B-spline curves, 5 line strips, 6 composites; 1 plane, 2 cylinders, 3
/// cones, 4 spheres, 5 tori, 6 B-spline surfaces, 7 surfaces of revolution, 8 of linear extrusion,
/// 9 ruled ones, 10 offset ones, 11 surface carriers without geometry; 2 curves in parameter space,
/// 3 coordinate systems and 4 spot welds.
void makeCountedGeometry();

} // namespace tests

#endif
