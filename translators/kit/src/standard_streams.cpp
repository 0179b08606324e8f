#include "standard_streams.h"

#include <fcntl.h>
#include <unistd.h>

namespace translator_kit {

void keepStandardOutputFree()
{
    int nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    while (nowhere >= 0 && nowhere <= STDERR_FILENO) {
        // The lowest free number: this one stays, for the programs that this one starts as well.
        fcntl(nowhere, F_SETFD, 0);
        nowhere = open("/dev/null", O_RDWR | O_CLOEXEC);
    }
    if (nowhere >= 0)
        close(nowhere);
    dup2(STDERR_FILENO, STDOUT_FILENO);
}

} // namespace translator_kit
