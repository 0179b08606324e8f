#include "process/frame_values.h"

#include <keld-common/channel.h>
#include <keld-common/files.h>
#include <keld-transl/process/client.h>
#include <keld-transl/process/rwfd.h>
#include <keld-transl/process/server.h>

#include <cstring>
#include <ostream>

namespace transl_tk {

namespace {

/// A command block on the pipe: translators read commands in blocks of this size.
constexpr std::size_t CommandSize = 4096;

/// The command that names the file, filled up to a whole block, for a sender that takes "%%" for
/// "%".
std::string fileCommand(bool isImport, std::string fileName)
{
    for (auto at = fileName.find('%'); at != std::string::npos; at = fileName.find('%', at + 2))
        fileName.insert(at, 1, '%');
    std::string command = (isImport ? "f " : "s ") + fileName + '\n';
    // A file name with a zero byte ends there, as any text handed to the system does.
    command.resize(std::strlen(command.c_str()));
    command.resize(CommandSize, '-');
    return command;
}

} // namespace

int Client::m_RefCounter = 0;

Client::Client()
    : m_ServerExitStatus(ExitCompleted), m_ExecIO(IExecIO::create(), &IExecIO::destruct)
{
    m_Handlers.emplace(FrameExit, &onExitMsg);
    m_Handlers.emplace(FrameSuccess, &onSuccessMsg);
    m_Handlers.emplace(FrameFileNameAccepted, &onFilePathNameOkMsg);
    m_Handlers.emplace(FrameProgress, &onProgressMsg);
    m_Handlers.emplace(FrameStatus, &onStatusMsg);
}

Client::Client(Client const &) = default;
Client & Client::operator=(Client const &) = default;
Client::~Client() = default;

std::string Client::toolkitTitle()
{
    return m_ToolkitTitle;
}

void Client::initServer(unsigned int const & serverType)
{
    if (m_RefCounter != 0 || Server::isOpen()) {
        ++m_RefCounter;
        return;
    }
    Server::SetServerType(serverType);
    std::string const command = getExecCmd();
    if (!command.empty()) {
        if (!Server::exist(command.c_str())) {
            ServerSetInactive(KELD_CHANNEL_NUMBER);
        } else {
            fillOptions();
            if (m_ExecIO->write()) {
                Server::create(true);
                Server::open("transl_tk_server", command, getLibPath());
                ++m_RefCounter;
            } else {
                m_ServerExitStatus = ExitNoOptionsFile;
                Server::Stream()->post(StreamPolicy::Report)
                    << "|OPTIONS_LOG: Could not write options xml file" << std::endl;
            }
        }
    }
    Server::Stream()->post(StreamPolicy::Report)
        << "|COMMAND_LOG: Command to launch translator executable: " << command << std::endl;
}

void Client::run()
{
    if (m_FileName.empty())
        return;
    Server::send(fileCommand(getMode() == "import", m_FileName).c_str());
    setProgress(10);
    Server::wait(&Client::wait, this);
}

void Client::finiServer()
{
    if (!Server::isOpen())
        return;
    if (m_RefCounter-- == 1) {
        if (ServerGetPtr(KELD_CHANNEL_NUMBER)->ended == 0) {
            Server::send("q\n");
            Server::wait(&Client::wait, this);
        }
        Server::shutdown();
        // A translator removes the options file when it reads it. One that died before has not.
        unlink_utf8(m_ExecIO->optionsFilePath(std::to_string(getCurrentProcessId())).c_str());
    }
    m_ExecIO->clear();
}

bool Client::wait(char * buffer, int & position, bool const & hasPayload, int & messageId,
                  void * context)
{
    auto const & handlers = static_cast<Client *>(context)->m_Handlers;
    if (auto const entry = handlers.find(messageId); entry != handlers.end())
        entry->second(buffer, position, hasPayload, messageId, context);
    return true;
}

bool Client::onExit(char * buffer, int & position, bool const & /*hasPayload*/, int & /*messageId*/)
{
    m_ServerExitStatus = takeStatus(buffer, position, ExitFailed);
    Server::send("x \n");
    return true;
}

bool Client::onProgress(char * buffer, int & position, bool const & /*hasPayload*/,
                        int & /*messageId*/)
{
    int percent = 0;
    if (takeValue(buffer, position, percent))
        setProgress(percent);
    return true;
}

bool Client::onStatus(char * buffer, int & position, bool const & /*hasPayload*/,
                      int & /*messageId*/)
{
    int value = 0;
    if (takeValue(buffer, position, value))
        setStatus(value);
    return true;
}

unsigned int Client::serverExitStatus() const
{
    return m_ServerExitStatus;
}

void Client::setServerExitStatus(unsigned int const & status)
{
    m_ServerExitStatus = status;
}

std::string Client::serverExitStatusMsg() const
{
    switch (m_ServerExitStatus) {
    case ExitFailed:
        return "Failed!";
    case ExitExportFailed:
        return "Export procedure failed";
    case ExitUnsupportedFileType:
        return "Failed! Unsupported file type";
    case ExitEmptyModel:
        return "Failed! Model is empty";
    case ExitMissingExportInfo:
        return "Failed! Missing export info";
    case ExitCompleted:
        return "Completed!";
    case ExitCancelled:
        return "Server cancelled";
    default:
        return "Unexpected error!";
    }
}

IExecIO * Client::getExecIO() const
{
    return m_ExecIO.get();
}

std::string Client::getFileName() const
{
    return m_FileName;
}

void Client::setFileName(std::string const & fileName)
{
    m_FileName = fileName;
}

bool Client::onExitMsg(char * buffer, int & position, bool const & hasPayload, int & messageId,
                       void * context)
{
    return static_cast<Client *>(context)->onExit(buffer, position, hasPayload, messageId);
}

bool Client::onSuccessMsg(char * buffer, int & position, bool const & hasPayload, int & messageId,
                          void * context)
{
    return static_cast<Client *>(context)->onSuccess(buffer, position, hasPayload, messageId);
}

bool Client::onFilePathNameOkMsg(char * buffer, int & position, bool const & hasPayload,
                                 int & messageId, void * context)
{
    return static_cast<Client *>(context)->onFilePathNameOk(buffer, position, hasPayload,
                                                            messageId);
}

bool Client::onProgressMsg(char * buffer, int & position, bool const & hasPayload, int & messageId,
                           void * context)
{
    return static_cast<Client *>(context)->onProgress(buffer, position, hasPayload, messageId);
}

bool Client::onStatusMsg(char * buffer, int & position, bool const & hasPayload, int & messageId,
                         void * context)
{
    return static_cast<Client *>(context)->onStatus(buffer, position, hasPayload, messageId);
}

} // namespace transl_tk
