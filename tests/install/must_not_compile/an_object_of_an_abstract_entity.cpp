// refused: abstract
#include <keld-transl/model/point3d.h>

void copy([[maybe_unused]] transl_tk::Point3D const & point)
{
#ifdef KELD_MUST_NOT_COMPILE
    new transl_tk::Point3D(point);
#endif
}
