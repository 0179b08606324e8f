#ifndef KELD_TRANSL_EXCHANGE_RECORDS_ANNOTATION_RECORD_H
#define KELD_TRANSL_EXCHANGE_RECORDS_ANNOTATION_RECORD_H

#include "exchange/section.h"

#include <keld-transl/attributes/annotation.h>

#include <span>

namespace transl_tk {

/// An `Annotation`: id, four triples, counted points, four triples of integers, five numbers, two
/// texts.
struct AnnotationRecord
{
    using Entity = Annotation;
    static constexpr EntityStore SubPool::*Store = &SubPool::m_Annotations;
    static constexpr std::size_t LeastSize = 180;

    template <class Sink> static void put(Sink & sink, Annotation & annotation)
    {
        sink.i32(annotation.getId());
        double triple[3];
        for (auto const get : {&Annotation::getFirstTriple, &Annotation::getSecondTriple,
                               &Annotation::getThirdTriple, &Annotation::getFourthTriple}) {
            (annotation.*get)(triple[0], triple[1], triple[2]);
            sink.f64(triple);
        }
        std::size_t const points = annotation.getNumPoints();
        sink.count(points);
        sink.elements(std::span(annotation.getPoints(), 3 * points), 3 * points);
        int ints[3];
        for (auto const get : {&Annotation::getFirstInts, &Annotation::getSecondInts,
                               &Annotation::getThirdInts, &Annotation::getFourthInts}) {
            (annotation.*get)(ints[0], ints[1], ints[2]);
            for (int const number : ints)
                sink.i32(number);
        }
        for (auto const get : {&Annotation::getFirstNumber, &Annotation::getSecondNumber,
                               &Annotation::getThirdNumber, &Annotation::getFourthNumber,
                               &Annotation::getFifthNumber})
            sink.i32((annotation.*get)());
        sink.string(annotation.getFirstText());
        sink.string(annotation.getSecondText());
    }

    static void read(StreamReader & reader);
};

} // namespace transl_tk

#endif
