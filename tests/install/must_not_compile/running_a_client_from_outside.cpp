// refused: protected within this context
#include <keld-transl/process/client.h>

void start([[maybe_unused]] transl_tk::Client & client)
{
#ifdef KELD_MUST_NOT_COMPILE
    client.run();
#endif
}
