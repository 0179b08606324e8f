#include "exchange/records/annotation_record.h"

#include "geom/array.h"

#include <string>

namespace transl_tk {

void AnnotationRecord::read(StreamReader & reader)
{
    int id = 0;
    double triples[4][3];
    geom::Array<double> points;
    int ints[4][3];
    int numbers[5];
    std::string texts[2];

    reader.i32(id);
    for (auto & triple : triples)
        reader.f64(triple);
    std::size_t const pointCount = reader.count(3 * sizeof(double));
    reader.elements(points, 3 * pointCount);
    for (auto & row : ints)
        for (int & number : row)
            reader.i32(number);
    for (int & number : numbers)
        reader.i32(number);
    for (std::string & text : texts)
        reader.string(text);

    remember<AnnotationRecord>(
        reader, Annotation::create(id, triples[0], triples[1], triples[2], triples[3],
                                   static_cast<int>(pointCount), points.data(), ints[0], ints[1],
                                   ints[2], ints[3], numbers[0], numbers[1], numbers[2], numbers[3],
                                   numbers[4], texts[0].c_str(), texts[1].c_str()));
}

} // namespace transl_tk
