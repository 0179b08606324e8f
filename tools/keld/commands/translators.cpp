#include "translators.h"

#include "commands/commands.h"

#include <cstdio>

namespace keld {

ExitCode runTranslators()
{
    for (TranslatorChoice const & translator : allTranslators()) {
        std::string const command = translator.paths->calcExecCmd();
        std::printf("%-10s %-10s %s\n", translator.name.c_str(),
                    translator.trouble.empty() ? "usable" : "not usable",
                    (translator.trouble.empty() ? command : translator.trouble).c_str());
        for (TriedPath const & tried : translator.tried)
            std::printf("    %s: %s\n", tried.path.c_str(), tried.finding.c_str());
    }
    return Success;
}

} // namespace keld
