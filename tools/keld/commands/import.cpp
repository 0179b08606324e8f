#include "commands/commands.h"
#include "import_file.h"
#include "interrupt.h"

namespace keld {

ExitCode runImport(BatchArguments const & arguments)
{
    if (arguments.files.size() > 1)
        return importFiles(arguments);
    cleanUpOnInterrupt();
    return importFile(arguments.common, {arguments.files.front(), arguments.translator},
                      arguments.output);
}

} // namespace keld
