#include "process/frame_values.h"

#include <keld-transl/model/pool.h>
#include <keld-transl/process/client_out.h>
#include <keld-transl/process/server.h>

namespace transl_tk {

ClientOut::ClientOut() = default;
ClientOut::~ClientOut() = default;

void ClientOut::write(std::string const & fileName, unsigned int const & serverType)
{
    m_FileName = fileName;
    initServer(serverType);
    run();
    Server::unmapSharedMemory(false);
    finiServer();
}

ExportOptions & ClientOut::getOptions()
{
    return m_Options;
}

std::string ClientOut::getMode()
{
    return "export";
}

bool ClientOut::onFilePathNameOk(char * /*buffer*/, int & /*position*/, bool const & /*hasPayload*/,
                                 int & /*messageId*/)
{
    setProgress(15);
    std::string const segment = getSharedMemName();
    ProxyServer::instance().m_ConversationSegment = segment;
    Pool::construct(m_FileName);
    transferModel();
    long long const size = Server::writeSharedMem(segment);
    setProgress(50);
    Pool::destruct();
    if (!Server::exchangeFailure().empty()) {
        // There is nothing to name to the translator; a taken name would be somebody else's model.
        m_ServerExitStatus = ExitFailed;
        Server::send("x \n");
        return true;
    }
    Server::send(("e " + std::to_string(size) + ", " + segment + "\n").c_str());
    return true;
}

bool ClientOut::onSuccess(char * buffer, int & position, bool const & /*hasPayload*/,
                          int & /*messageId*/)
{
    m_ServerExitStatus = takeStatus(buffer, position, ExitFailed);
    Server::send("x \n");
    setProgress(90);
    return true;
}

} // namespace transl_tk
