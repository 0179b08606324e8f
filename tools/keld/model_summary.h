#ifndef KELD_TOOLS_MODEL_SUMMARY_H
#define KELD_TOOLS_MODEL_SUMMARY_H

#include <keld-transl/model/sub_pool.h>

#include <cstddef>
#include <utility>
#include <vector>

namespace keld {

/// The name of a kind of shape and how many carriers have one of that kind.
using ShapeCount = std::pair<char const *, std::size_t>;

/// The kinds of curves and surfaces that the model has, in the order of their types.
std::vector<ShapeCount> curveKinds(transl_tk::SubPool const & model);
std::vector<ShapeCount> surfaceKinds(transl_tk::SubPool const & model);

/// The smallest box with edges along the axes that holds the points of a model.
struct Box
{
    bool empty = true; ///< there are no points
    double low[3];
    double high[3];
};

Box boxAroundPoints(transl_tk::SubPool const & model);

/// Prints how many entities of each kind the model holds, of curves and surfaces how many of each
/// kind of shape, of facets what `printFacets` says, and the box around its points.
void printSummary(transl_tk::SubPool const & model);

/// Prints the first `limit` points in the order of their ids: id and coordinates, with as many
/// digits as it takes to tell the values from all others.
void printPoints(transl_tk::SubPool const & model, long long limit);

/// Prints the shown entries of the model's log on standard error. Control characters in their words
/// are printed as \xNN.
void printLog(transl_tk::SubPool & model);

} // namespace keld

#endif
