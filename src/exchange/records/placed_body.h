#ifndef KELD_TRANSL_EXCHANGE_RECORDS_PLACED_BODY_H
#define KELD_TRANSL_EXCHANGE_RECORDS_PLACED_BODY_H

#include "exchange/records/geometry_fields.h"

#include <array>
#include <tuple>
#include <utility>

namespace transl_tk {

/// The body of a kind that is a few numbers and a placement: the numbers, then the placement. The
/// getters tell which numbers they are, in the order in which the kind is made of them.
template <class Proxy, auto... Getters> struct PlacedBody
{
    std::array<double, sizeof...(Getters)> numbers;
    geom::Placement placement;

    void take(Proxy & shape)
    {
        numbers = {(shape.*Getters)()...};
        double rows[4][3];
        shape.getPlacement(rows[0], rows[1], rows[2], rows[3]);
        placement = {std::to_array(rows[0]), std::to_array(rows[1]), std::to_array(rows[2]),
                     std::to_array(rows[3])};
    }

    template <class Stream> constexpr void fields(Stream & stream)
    {
        stream.f64(numbers);
        placementFields(stream, placement);
    }

    /// The third axis has travelled, and is computed anew all the same, as for every new shape.
    template <class... Parameterizations> Proxy * make(Parameterizations... parameterizations) const
    {
        double rows[3][3];
        geom::fill(rows[0], placement.location);
        geom::fill(rows[1], placement.first);
        geom::fill(rows[2], placement.second);
        return std::apply(
            [&](auto... number) {
                return new Proxy(geom::placed(rows[0], rows[1], rows[2]), number...,
                                 std::move(parameterizations)...);
            },
            numbers);
    }
};

} // namespace transl_tk

#endif
