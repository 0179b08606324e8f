#ifndef KELD_TOOLS_MODEL_SUMMARY_H
#define KELD_TOOLS_MODEL_SUMMARY_H

#include <keld-transl/model/sub_pool.h>

namespace keld {

/// Prints how many entities of each kind the model holds, of curves and surfaces how many of each
/// kind of shape, of facets what `printFacets` says, and the box around its points.
void printSummary(transl_tk::SubPool const & model);

/// Prints the first `limit` points in the order of their ids: id and coordinates, with as many
/// digits as it takes to tell the values from all others.
void printPoints(transl_tk::SubPool const & model, long long limit);

/// Prints the shown entries of the model's log on standard error. Control characters in their words
/// are printed as \xNN, so that no word of a translator drives the terminal.
void printLog(transl_tk::SubPool & model);

} // namespace keld

#endif
