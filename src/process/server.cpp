#include "exchange/model_exchange.h"
#include "exchange/proxy_server.h"
#include "exchange/stream_error.h"
#include "model/entity.h"
#include "process/receive_loop.h"
#include "reporting/stream_implementation.h"

#include <keld-common/channel.h>
#include <keld-common/crash_report.h>
#include <keld-common/files.h>
#include <keld-transl/model/pool.h>
#include <keld-transl/process/exec_io.h>
#include <keld-transl/process/server.h>
#include <keld-transl/product/component.h>
#include <keld-transl/reporting/logger_policy.h>

#include <cstdlib>
#include <cstring>
#include <memory>
#include <ostream>

namespace transl_tk {

namespace {

ProxyServer & proxy()
{
    return ProxyServer::instance();
}

/// Puts a new segment object in the place of the last one, which is not unmapped.
SharedMem & newSegment(std::string const & name, long long size, bool create)
{
    auto fresh = std::make_unique<SharedMem>(name, size, create);
    delete proxy().m_SharedMem;
    proxy().m_SharedMem = fresh.release();
    proxy().m_SharedMem->map();
    return *proxy().m_SharedMem;
}

/// Runs one half of the exchange and turns what went wrong into the words of `exchangeFailure`.
template <class Half> void runExchange(Half half)
{
    ProxyServer & server = proxy();
    try {
        half();
        return;
    } catch (StreamError const & error) {
        server.m_ExchangeFailure = error.what();
    } catch (std::bad_alloc const &) {
        server.m_ExchangeFailure = "There is not enough memory for the model.";
    }
    server.m_Stream->post(StreamPolicy::Report)
        << "|STREAM_LOG: " << server.m_ExchangeFailure << std::endl;
    server.m_Stream->post(StreamPolicy::Error) << server.m_ExchangeFailure << std::endl;
}

/// Removes the name of a segment whose holders have died: to open it and let go makes this process
/// its last holder.
void clearAwaySegment(std::string const & name)
{
    if (name.empty())
        return;
    SharedMem segment(name, 0, false);
    segment.map();
    segment.unmap();
}

/// Looks for the option `name`. False when there is none. `text` gets its value when that is one
/// text, and is empty otherwise.
bool findOption(IExecIO & options, char const * name, std::string & text)
{
    text.clear();
    for (int i = 0; i < options.size(); ++i) {
        IOption const * const option = options.getOption(i);
        if (std::strcmp(option->getName(), name) != 0)
            continue;
        constexpr int TextType = 1;
        if (option->getNumValues() == 1 && option->getValue(0) != nullptr &&
            option->getValue(0)->getType() == TextType) {
            char * value = nullptr;
            option->getValue(0)->getValue(value);
            text = value;
        }
        return true;
    }
    return false;
}

/// Says in the report what the process was at when it failed. Runs on the faulting thread.
int onCrash(int /*signal*/, int answer)
{
    SubPool const * const subPool = CurrentSubPool::get();
    Component const * const component =
        subPool != nullptr ? subPool->m_Logger->getProcessingComponent() : nullptr;
    // Names are read by an operation that is not const, and changes nothing.
    if (component != nullptr)
        proxy().m_Stream->post(StreamPolicy::Plain)
            << "\nProcess failed while reading component: "
            << const_cast<Component *>(component)->getName() << std::endl;
    proxy().m_Stream->post(StreamPolicy::Plain)
        << "\nVORN wrote a dump file (" << crash_report_get_filename() << ") !!!" << std::endl;
    return answer;
}

} // namespace

void Server::create(bool const & remote)
{
    proxy().m_Remote = remote;
}

void Server::open(std::string const & name, std::string const & command,
                  std::string const & libraryPath)
{
    ProxyServer & server = proxy();
    if (!server.m_HostRunning)
        server.m_HostRunning = ServerSetLumoRunning() == 1;
    if (server.m_Remote && server.m_HostRunning && !server.m_Open) {
        ServerOpen(KELD_CHANNEL_NUMBER, name.c_str(), command.c_str(),
                   libraryPath.empty() ? nullptr : libraryPath.c_str());
        server.m_Open = true;
    }
}

void Server::send(char const * text)
{
    if (proxy().m_Remote && proxy().m_Open)
        ServerSendValist(KELD_CHANNEL_NUMBER, text);
}

void Server::wait(bool (*callback)(char *, int &, bool const &, int &, void *), void * context)
{
    if (proxy().m_Remote && proxy().m_Open)
        receiveFrames(*ServerGetPtr(KELD_CHANNEL_NUMBER), callback, context);
}

void Server::shutdown()
{
    ProxyServer & server = proxy();
    if (!server.m_Remote || !server.m_Open)
        return;
    ServerShutdownAndClosePipes(KELD_CHANNEL_NUMBER);
    server.m_Open = false;
    ServerFreeOldPath();
    clearAwaySegment(std::exchange(server.m_ConversationSegment, {}));
}

bool Server::isOpen()
{
    return proxy().m_Open;
}

bool Server::isRemote()
{
    return proxy().m_Remote;
}

bool Server::exist(char const * command)
{
    return ServerQueryExist(command) != 0;
}

unsigned int Server::ServerType()
{
    return proxy().m_ServerType;
}

void Server::SetServerType(unsigned int type)
{
    proxy().m_ServerType = type;
}

bool Server::IsServerOfType(unsigned int const & type)
{
    unsigned int const current = proxy().m_ServerType;
    return type == current || (type & current) == current;
}

StreamPolicy * Server::Stream()
{
    return proxy().m_Stream;
}

void Server::echo_start(StreamPolicy::Mode const & mode, std::string const & path)
{
    echo_end();
    bool const withPath = !path.empty();
    StreamPolicy * stream = nullptr;
    switch (mode) {
    case StreamPolicy::StreamAndFile:
        stream = withPath ? new StreamImplementation<StreamOn, FileOn>(path)
                          : new StreamImplementation<StreamOn, FileOn>;
        break;
    case StreamPolicy::FileOnly:
        stream = withPath ? new StreamImplementation<StreamOff, FileOn>(path)
                          : new StreamImplementation<StreamOff, FileOn>;
        break;
    case StreamPolicy::StreamOnly:
        if (!withPath)
            stream = new StreamImplementation<StreamOn, FileOff>;
        break;
    case StreamPolicy::Silent:
        break;
    }
    if (stream != nullptr)
        proxy().m_Stream = stream;
}

void Server::echo_end()
{
    ProxyServer & server = proxy();
    if (server.m_Stream == server.m_DefaultStream)
        return;
    delete server.m_Stream;
    server.m_Stream = server.m_DefaultStream;
}

long long Server::writeSharedMem(std::string const & name)
{
    proxy().m_ExchangeFailure.clear();
    SubPool * const subPool = CurrentSubPool::get();
    if (subPool == nullptr)
        return 0;
    long long size = 0;
    runExchange([&] {
        size = streamSize(*subPool);
        if (size >= 1 && !name.empty())
            writeModel(newSegment(name, size, true), *subPool);
    });
    return size;
}

void Server::readSharedMem(std::string const & name, long long const & size)
{
    proxy().m_ExchangeFailure.clear();
    if (size < 1 || name.empty())
        return;
    runExchange([&] {
        SharedMem & segment = newSegment(name, size, false);
        try {
            SubPool * const subPool = CurrentSubPool::get();
            if (subPool == nullptr)
                throw StreamError("There is no pool to read the model into.");
            readModel(segment, *subPool);
        } catch (...) {
            segment.unmap();
            throw;
        }
        segment.unmap();
    });
}

std::string const & Server::exchangeFailure()
{
    return proxy().m_ExchangeFailure;
}

void Server::unmapSharedMemory(bool const & force)
{
    SharedMem * const segment = proxy().m_SharedMem;
    if (segment == nullptr)
        return;
    if (force)
        segment->forceUnmap();
    else
        segment->unmap();
}

void Server::error_exit(int const & code)
{
    unmapSharedMemory(true);
    std::exit(code);
}

void Server::quit_exit(int const & code)
{
    echo_end();
    error_exit(code);
}

bool Server::SetDumpFileGenerator(IExecIO * options)
{
    std::string text;
    if (findOption(*options, "dump_directory", text) && !text.empty()) {
        char directory[1024] = {};
        text.copy(directory, sizeof(directory) - 1);
        towin_path(directory);
        install_crash_report_args(directory, 0, onCrash, 0);
    }
    if (envexists_utf8("TRANSL_REPORT_FILE") != 0 && findOption(*options, "full_reprot", text) &&
        !text.empty())
        echo_start(StreamPolicy::StreamAndFile, text);
    return true;
}

} // namespace transl_tk
