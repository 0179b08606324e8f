#ifndef KELD_STEP_KERNEL_SPLINES_H
#define KELD_STEP_KERNEL_SPLINES_H

#include <Standard_RangeError.hxx>
#include <TColStd_Array1OfInteger.hxx>
#include <TColStd_Array1OfReal.hxx>
#include <vector>

namespace step {

/// The distinct knots of one direction of a spline, as the kernel takes them.
struct KernelKnots
{
    /// `get(knots, multiplicities)` fills two arrays of `count`. A Standard_Failure when there is
    /// none.
    template <class Get>
    KernelKnots(int count, Get && get)
        : values(1, count > 0 ? count : throw Standard_RangeError("a spline without knots")),
          multiplicities(1, count)
    {
        get(&values.ChangeFirst(), &multiplicities.ChangeFirst());
    }

    TColStd_Array1OfReal values;
    TColStd_Array1OfInteger multiplicities;
};

/// Fills a vector of `count` doubles by a getter of a spline.
template <class Get> std::vector<double> fetched(long long count, Get && get)
{
    if (count < 1)
        throw Standard_RangeError("a spline without control points");
    std::vector<double> result(static_cast<std::size_t>(count));
    get(result.data());
    return result;
}

} // namespace step

#endif
