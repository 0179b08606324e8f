// refused: private within this context
#include <keld-transl/exchange/shared_mem.h>

void make()
{
#ifdef KELD_MUST_NOT_COMPILE
    transl_tk::SharedMem segment;
#endif
}
