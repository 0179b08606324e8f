#ifndef KELD_TRANSL_EXCHANGE_MODEL_EXCHANGE_H
#define KELD_TRANSL_EXCHANGE_MODEL_EXCHANGE_H

#include <keld-transl/exchange/shared_mem.h>
#include <keld-transl/model/sub_pool.h>

namespace transl_tk {

/// Bytes of the model stream of `subPool`. Sorts its faces to split and drops doubles. Throws a
/// `StreamError` when the model has no stream.
long long streamSize(SubPool & subPool);

/// Writes the model stream of `subPool` into `segment`, which `map` has tried to create at the
/// stream's size. Throws a `StreamError` when there is no view to write to.
void writeModel(SharedMem & segment, SubPool & subPool);

/// Adds the model in `segment`, which `map` has tried to open, to `subPool`. Throws a `StreamError`
/// when there is no view, when the segment is smaller than announced, or when its content is not
/// sound; `subPool` is then as it was.
void readModel(SharedMem & segment, SubPool & subPool);

} // namespace transl_tk

#endif
