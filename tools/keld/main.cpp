#include "command_line.h"
#include "installation.h"

#include <cstdio>
#include <exception>
#include <filesystem>

int main(int argc, char ** argv)
{
    int code = keld::RunFailed;
    try {
        auto const command = keld::parseCommandLine(argc, argv);
        keld::chooseInstallation();
        code = command();
    } catch (std::filesystem::filesystem_error const & error) {
        std::fprintf(stderr, "keld: %s\n", error.what());
        code = keld::OutputFailed;
    } catch (std::exception const & exception) {
        std::fprintf(stderr, "keld: %s\n", exception.what());
    }
    if (std::fflush(stdout) != 0 || std::ferror(stdout)) {
        std::fputs("keld: standard output could not be written.\n", stderr);
        return code == keld::Success ? keld::OutputFailed : code;
    }
    return code;
}
