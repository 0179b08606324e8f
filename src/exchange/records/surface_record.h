#ifndef KELD_TRANSL_EXCHANGE_RECORDS_SURFACE_RECORD_H
#define KELD_TRANSL_EXCHANGE_RECORDS_SURFACE_RECORD_H

#include "exchange/size_counter.h"
#include "exchange/stream_reader.h"
#include "exchange/stream_writer.h"
#include "geom/owned.h"

namespace transl_tk {

/// A surface: its type, its two parameterizations, its body. Null is the tag 0 alone.
void putSurface(SizeCounter & sink, geom::Surface * surface);
void putSurface(StreamWriter & sink, geom::Surface * surface);

/// The next surface in the stream; null for the tag of no kind, of which the tag alone is read.
geom::OwnedSurface readSurface(StreamReader & reader);

} // namespace transl_tk

#endif
