#ifndef KELD_TRANSL_EXCHANGE_RECORDS_CURVE_RECORD_H
#define KELD_TRANSL_EXCHANGE_RECORDS_CURVE_RECORD_H

#include "exchange/size_counter.h"
#include "exchange/stream_reader.h"
#include "exchange/stream_writer.h"
#include "geom/owned.h"

namespace transl_tk {

/// A curve as it stands inside other records: its type, its parameterization, its body. Null is the
/// tag 0 alone.
void putCurve(SizeCounter & sink, geom::Curve * curve);
void putCurve(StreamWriter & sink, geom::Curve * curve);

/// The next curve in the stream; null for the tag of no kind, of which the tag alone is read.
geom::OwnedCurve readCurve(StreamReader & reader);

/// A curve in parameter space: the body of a spline, without a type.
void putUVCurve(SizeCounter & sink, geom::UVCurve * curve);
void putUVCurve(StreamWriter & sink, geom::UVCurve * curve);
geom::OwnedUVCurve readUVCurve(StreamReader & reader);

} // namespace transl_tk

#endif
