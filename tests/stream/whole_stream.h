#ifndef KELD_TESTS_STREAM_WHOLE_STREAM_H
#define KELD_TESTS_STREAM_WHOLE_STREAM_H

#include "stream/geometry_records.h"
#include "stream/product_records.h"

#include <utility>

namespace tests {

/// A sound stream with records in every section, whose ids are all below 10. A model that is read
/// from it is written as the same bytes.
inline Bytes wholeStream()
{
    using namespace records;
    ByteString turned;
    turned.i32(6).i32(3).raw(transform({0, 1, 0, 0, -1, 0, 0, 0, 0, 0, 1, 0, 5, 6, 7, 1}));
    ByteString noted;
    noted.i32(1).f64({1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 11, 12}).i32(1).f64({1, 2, 3});
    for (int number = 1; number <= 17; ++number)
        noted.i32(number);
    noted.text("first").text("second");
    ByteString labelled;
    labelled.i32(7).text("labelled").text("a").text("b").text("c");
    labelled.i32(3).f64({1}).i32(3).f64({2}).i32(0).raw(identity()).zeros(32);

    std::vector<ByteString> const nodes = {
        branch(1, 5, "branch",
               {leaf(2, {parameter(1, {intValue(1), doubleValue(2), textValue("t")})}, {{1, 9}},
                     {property("key", boolValue(1))}),
                branch(3, 6, "inner", {again(2)})},
               {{1, 5}, {3, 7}}, {property("a", byteValue(9)), property("b", textValue("v"))}),
        again(3)};
    return withLog(
        model({{Facets, {bareStrip(1), bareStrip(2)}},
               {Points, {point(1), point(2)}},
               {SpotWelds, {ByteString().i32(1).f64({1, 2, 3}).i32(1).text("weld")}},
               {CoordinateSystems, {ByteString().i32(1).raw(placement())}},
               {Curves, {carried(1, line()), carried(2, circle())}},
               {UVCurves, {ByteString().i32(1).i32(3).raw(uvCurve())}},
               {Surfaces, {carried(1, plane())}},
               {Vertices, {vertex(1, {1, 2, 3}), vertex(2, 0.5)}},
               {Edges, {edge(1, 1, 1, 2), edge(2, -1, -1, -1)}},
               {Fins, {fin(1, 1, 1)}},
               {Loops, {loop(1, {1})}},
               {Faces, {face(1, "face", true, 1, {1})}},
               {Shells, {shell(1, true, {1})}},
               {Bodies, {body(1, "body", {1}, {1})}},
               {Annotations, {noted}},
               {Assemblies, {assembly(1, "top", {4, 2}), assembly(2, "inner", {5, 6, 7})}},
               {Parts,
                {part(3, "part", nodes, {{{1}, {1, 2}, {1}, {1}, {2}, {2}, {2}, {1}}}), labelled}},
               {Instances, {instance(4, 3), instance(5, 3), turned}},
               {Attributes,
                {attribute("colour", 3, {byteValue(1), byteValue(2), byteValue(3)}, {{1, 5}}),
                 attribute("product", 2, {textValue("x"), doubleValue(1)}, {{1, 7}, {4, 7}})}},
               {ReportEntries, {reportEntry("entry", 18, 1), reportEntry("", 2, 0)}},
               {TextList, {ByteString().text("line")}},
               {FacesToSplit, {ByteString().i32(1)}}}),
        {{{logEntry("one", 2, 1)}, {logEntry("two", 0, 0)}, {}, {}, {logEntry("six", 3, 1)}}});
}

} // namespace tests

#endif
