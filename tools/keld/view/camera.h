#ifndef KELD_TOOLS_VIEW_CAMERA_H
#define KELD_TOOLS_VIEW_CAMERA_H

#include "view/scene.h"

namespace keld::view {

/// How a scene is looked at: along parallel lines, the third axis upward.
struct Camera
{
    double azimuth = 0;   ///< of the direction towards the eye, radians
    double elevation = 0; ///< the same
    Triple target = {0, 0, 0};
    double halfWidth = 1;  ///< of what is seen
    double halfHeight = 1; ///< the same
    double radius = 1;     ///< nothing is farther from the target

    Triple right() const;
    Triple up() const;
    Triple toward() const;
};

/// From the front, to the right and above, all of a scene that is not empty in sight.
Camera wholeScene(Scene const & scene);

} // namespace keld::view

#endif
