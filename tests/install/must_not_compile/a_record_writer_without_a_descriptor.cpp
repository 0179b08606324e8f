// refused: private within this context
#include <keld-transl/process/rwfd.h>

void make()
{
#ifdef KELD_MUST_NOT_COMPILE
    transl_tk::RWFD writer;
#endif
}
