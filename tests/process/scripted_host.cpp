#include "process/scripted_host.h"

namespace tests {

std::string scriptedCommand(std::string const & script)
{
    // Quoted as the command line's rules have it: nothing is special between single quotes.
    std::string quoted;
    for (char const c : script)
        quoted += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return "'" KELD_TEST_SCRIPTED_TRANSLATOR "' '" + quoted + "'";
}

} // namespace tests
