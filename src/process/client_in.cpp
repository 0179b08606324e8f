#include "process/frame_values.h"

#include <keld-transl/model/pool.h>
#include <keld-transl/process/client_in.h>
#include <keld-transl/process/server.h>

namespace transl_tk {

namespace {

/// The statuses whose model, if one was announced, stays where it is.
bool leavesModel(unsigned int status)
{
    return status == 6 || status == ExitCompleted || status == ExitCancelled;
}

/// Reads the model that the translator announced into a sub-pool named after the file.
bool readModel(std::string const & fileName, std::string const & segment, long long size)
{
    Pool::construct(fileName);
    if (segment.empty())
        return true;
    Server::readSharedMem(segment, size);
    return Server::exchangeFailure().empty();
}

} // namespace

ClientIn::ClientIn() = default;
ClientIn::~ClientIn() = default;

bool ClientIn::read(std::string const & fileName, unsigned int const & serverType)
{
    m_FileName = fileName;
    setProgress(0);
    initServer(serverType);
    if (m_ServerExitStatus != ExitNoOptionsFile) {
        setProgress(1);
        m_ServerExitStatus = ExitCompleted;
        run();
    }
    finiServer();
    if (m_ServerExitStatus != ExitCompleted)
        return m_ServerExitStatus == ExitCancelled;
    transferModel();
    setProgress(100);
    return true;
}

std::string ClientIn::getMode()
{
    return "import";
}

bool ClientIn::onFilePathNameOk(char * /*buffer*/, int & /*position*/, bool const & /*hasPayload*/,
                                int & /*messageId*/)
{
    if (m_FileName.empty())
        return false;
    if (confirmImport()) {
        std::string const segment = getSharedMemName();
        ProxyServer::instance().m_ConversationSegment = segment;
        Server::send(("i " + segment + "\n").c_str());
        importStarted();
    } else {
        Server::send("x \n");
        m_ServerExitStatus = ExitCancelled;
    }
    return true;
}

bool ClientIn::onSuccess(char * buffer, int & position, bool const & /*hasPayload*/,
                         int & /*messageId*/)
{
    long long size = 0;
    if (!takeValue(buffer, position, size))
        m_ServerExitStatus = ExitFailed;
    else if (size != 0 && !readModel(m_FileName, getSharedMemName(), size))
        m_ServerExitStatus = ExitFailed;
    Server::send("x u\n");
    return true;
}

bool ClientIn::onExit(char * buffer, int & position, bool const & /*hasPayload*/,
                      int & /*messageId*/)
{
    m_ServerExitStatus = takeStatus(buffer, position, ExitFailed);
    long long size = 0;
    if (m_ServerExitStatus != ExitMissingExportInfo && takeValue(buffer, position, size) &&
        size != 0 && !leavesModel(m_ServerExitStatus))
        readModel(m_FileName, getSharedMemName(), size);
    Server::send("x u\n");
    return true;
}

} // namespace transl_tk
