// refused: use of deleted function
#include <keld-transl/attributes/value.h>

void assign([[maybe_unused]] transl_tk::IValue & to,
            [[maybe_unused]] transl_tk::IValue const & from)
{
#ifdef KELD_MUST_NOT_COMPILE
    to = from;
#endif
}
