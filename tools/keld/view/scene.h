#ifndef KELD_TOOLS_VIEW_SCENE_H
#define KELD_TOOLS_VIEW_SCENE_H

#include "view/mesh.h"

#include <keld-transl/model/sub_pool.h>

#include <vector>

namespace keld::view {

/// A mesh at one of its places.
struct Occurrence
{
    std::size_t mesh = 0; ///< number in the scene
    Placement placement;
    Colour colour;
};

/// How much a scene may hold.
struct SceneLimits
{
    /// Of all occurrences. Three vertices or indices that no triangle needs count as one.
    std::size_t triangles = 20'000'000;
    std::size_t nodes = 1'000'000; ///< of the product structure, counted at each place
};

/// Everything of a model that can be drawn.
struct Scene
{
    std::vector<Mesh> meshes;
    std::vector<Occurrence> occurrences;
    std::size_t triangles = 0; ///< of all occurrences
    Box box;                   ///< of all occurrences, not always the smallest
    bool complete = true;      ///< whether all of the model is within the limits
    bool hasShells = false;    ///< whether the model has exact shapes

    bool isEmpty() const { return triangles == 0; }
};

/// What has no colour of its own has this one.
constexpr Colour UsualColour = {166, 180, 196};

/// Gathers the facets of the current model `model`, which must live as long as the scene: those of
/// parts at each place that the product structure gives them, all others as they stand.
///
/// Transforms have their columns one behind the other. An instance's takes the place of that of its
/// component. What is on top and placed by instances does not stand at a place of its own beside
/// them. The colour of a mesh is that of its vertices, its
/// body, the innermost instance, part or assembly, in that order. Vertices that have the colour of
/// their body or part take part in this as if they had none.
Scene gatherScene(transl_tk::SubPool & model, SceneLimits const & limits = {});

} // namespace keld::view

#endif
