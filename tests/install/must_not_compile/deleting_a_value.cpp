// refused: IValue\(\).* is protected within this context
#include <keld-transl/attributes/value.h>

void free([[maybe_unused]] transl_tk::IValue * value)
{
#ifdef KELD_MUST_NOT_COMPILE
    delete value;
#endif
}
