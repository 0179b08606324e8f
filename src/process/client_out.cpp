#include "process/frame_values.h"

#include <keld-transl/model/pool.h>
#include <keld-transl/process/client_out.h>
#include <keld-transl/process/server.h>

namespace transl_tk {

namespace {

constexpr unsigned int StatusFailed = 0;
constexpr unsigned int StatusCompleted = 8;
constexpr unsigned int StatusCancelled = 9;

} // namespace

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
    Server::send(("e " + std::to_string(size) + ", " + segment + "\n").c_str());
    return true;
}

bool ClientOut::onSuccess(char * buffer, int & position, bool const & /*hasPayload*/,
                          int & /*messageId*/)
{
    m_ServerExitStatus = takeStatus(buffer, position, StatusFailed);
    // No translator can have written a model that never reached it.
    bool const claimsSuccess =
        m_ServerExitStatus == StatusCompleted || m_ServerExitStatus == StatusCancelled;
    if (claimsSuccess && !Server::exchangeFailure().empty())
        m_ServerExitStatus = StatusFailed;
    Server::send("x \n");
    setProgress(90);
    return true;
}

} // namespace transl_tk
