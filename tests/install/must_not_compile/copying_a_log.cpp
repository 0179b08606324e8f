// refused: use of deleted function
#include <keld-transl/reporting/logger.h>

void copy([[maybe_unused]] transl_tk::Logger const & log)
{
#ifdef KELD_MUST_NOT_COMPILE
    transl_tk::Logger other(log);
#endif
}
