// refused: private within this context
#include <keld-transl/model/pool.h>

void make()
{
#ifdef KELD_MUST_NOT_COMPILE
    transl_tk::Pool pool;
#endif
}
