// refused: Point3D\(\).* is protected within this context
#include <keld-transl/model/point3d.h>

void free([[maybe_unused]] transl_tk::Point3D * point)
{
#ifdef KELD_MUST_NOT_COMPILE
    delete point;
#endif
}
