// refused: use of deleted function
#include <keld-transl/reporting/stream_policy.h>

void assign([[maybe_unused]] transl_tk::StreamPolicy & to,
            [[maybe_unused]] transl_tk::StreamPolicy const & from)
{
#ifdef KELD_MUST_NOT_COMPILE
    to = from;
#endif
}
