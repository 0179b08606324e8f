#include "conversation.h"
#include "standard_streams.h"

#include <keld-common/channel.h>
#include <keld-common/files.h>
#include <keld-transl/process/exec_io.h>
#include <keld-transl/process/server.h>
#include <keld-translator-kit/translator.h>

#include <csignal>
#include <cstdio>
#include <string>

namespace translator_kit {

int run(Translator const & translator)
{
    TranslatorEnds ends{};
    if (!TranslatorAttach(&ends)) {
        std::fprintf(stderr,
                     "%s is a translator: a host program starts it, it does not run alone.\n",
                     translator.name.c_str());
        return 2;
    }

    keepStandardOutputFree();
    // A host that is gone is noticed at its pipe, in order.
    std::signal(SIGPIPE, SIG_IGN);
    // The log is handed over as a whole; its entries are not to be echoed one by one as well.
    transl_tk::Server::create(true);

    transl_tk::IExecIO * const options = transl_tk::IExecIO::create();
    std::string const host = std::to_string(ends.hostProcess);
    // Reading fails for a file without a single option too, so a missing file is told beforehand.
    bool const optionsFound = iaccess(options->optionsFilePath(host).c_str(), "e") == 0;
    options->read(host);
    transl_tk::Server::SetDumpFileGenerator(options);
    Conversation(ends, translator, Options(*options), optionsFound).hold();
    transl_tk::IExecIO::destruct(options);
    transl_tk::Server::quit_exit(0);
}

} // namespace translator_kit
