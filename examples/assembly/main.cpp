// Builds a gearbox, sends it to a second process through shared memory, has it sent back, and
// compares what the processes see.
//
// The second process is this program again, started with the name of the segment, the size of the
// model in it, and the name of a segment for the way back. A host that runs translators leaves all
// of this to ClientIn and ClientOut; translator.cpp shows the other side of those.
#include "build_gearbox.h"
#include "print_model.h"

#include <keld-transl/model/pool.h>
#include <keld-transl/process/server.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <spawn.h>
#include <string>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using transl_tk::Pool;
using transl_tk::Server;

/// The pipes that connect the second process: its standard input and output.
struct Peer
{
    pid_t process = 0;
    std::FILE * to = nullptr;
    std::FILE * from = nullptr;
};

/// Says what the last exchange failed of; true when it did not.
bool exchanged(char const * what)
{
    if (Server::exchangeFailure().empty())
        return true;
    std::fprintf(stderr, "assembly: %s: %s\n", what, Server::exchangeFailure().c_str());
    return false;
}

std::string currentModel()
{
    return assembly::modelText(*Pool::getInstance()->currentSubPool());
}

/// Reads the model of a segment into a new sub-pool.
bool readModel(std::string const & segment, long long size, char const * subPool)
{
    Pool::construct(subPool);
    Server::readSharedMem(segment, size);
    bool const good = exchanged("reading the model");
    Server::unmapSharedMemory(true);
    return good;
}

/// The second process: takes the model, and hands it back in a segment of its own. That one stands
/// until this process lets go of it, which is when the other has closed the pipe.
int mirror(char const * segment, char const * size, char const * back)
{
    bool good = readModel(segment, std::strtoll(size, nullptr, 10), "received");
    if (good) {
        long long const sizeBack = Server::writeSharedMem(back);
        good = exchanged("writing the model");
        std::printf("%lld\n", good ? sizeBack : -1);
        std::fflush(stdout);
        while (std::getchar() != EOF) {
        }
        Server::unmapSharedMemory(true);
    }
    Pool::destruct();
    return good ? EXIT_SUCCESS : EXIT_FAILURE;
}

/// Starts this program as the second process.
bool start(std::string segment, long long size, std::string back, Peer & peer)
{
    int toPeer[2];
    int fromPeer[2];
    if (pipe(toPeer) != 0)
        return false;
    if (pipe(fromPeer) != 0) {
        close(toPeer[0]);
        close(toPeer[1]);
        return false;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, toPeer[0], STDIN_FILENO);
    posix_spawn_file_actions_adddup2(&actions, fromPeer[1], STDOUT_FILENO);
    for (int const end : {toPeer[0], toPeer[1], fromPeer[0], fromPeer[1]})
        posix_spawn_file_actions_addclose(&actions, end);

    std::string program = "assembly";
    std::string command = "mirror";
    std::string sizeText = std::to_string(size);
    char * const arguments[] = {program.data(),  command.data(), segment.data(),
                                sizeText.data(), back.data(),    nullptr};
    int const error =
        posix_spawn(&peer.process, "/proc/self/exe", &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    close(toPeer[0]);
    close(fromPeer[1]);
    peer.to = fdopen(toPeer[1], "w");
    peer.from = fdopen(fromPeer[0], "r");
    if (error != 0)
        std::fprintf(stderr, "assembly: the second process did not start: %s\n",
                     std::strerror(error));
    return error == 0;
}

/// The number on the next line, 0 when there is none.
long long readNumber(std::FILE * from)
{
    char line[32];
    return std::fgets(line, sizeof(line), from) != nullptr ? std::strtoll(line, nullptr, 10) : 0;
}

/// Lets the second process end; true when it was content.
bool finish(Peer & peer)
{
    std::fclose(peer.to);
    std::fclose(peer.from);
    int status = 0;
    return peer.process != 0 && waitpid(peer.process, &status, 0) == peer.process &&
           WIFEXITED(status) && WEXITSTATUS(status) == EXIT_SUCCESS;
}

/// Sends the current model to the second process and makes what comes back the current one.
bool sendBothWays(long long & size, long long & sizeBack)
{
    // The names are for this run alone.
    std::string const segment = "assembly_" + std::to_string(getpid());
    std::string const back = segment + "_back";
    size = Server::writeSharedMem(segment);
    if (!exchanged("writing the model"))
        return false;
    Peer peer;
    bool good = start(segment, size, back, peer);
    sizeBack = good ? readNumber(peer.from) : 0;
    good = sizeBack > 0;
    Server::unmapSharedMemory(true);
    good = good && readModel(back, sizeBack, "returned");
    return peer.to != nullptr && finish(peer) && good;
}

int sendGearbox()
{
    Pool::construct("gearbox");
    assembly::buildGearbox();
    std::string const sent = currentModel();
    std::printf("== Process 1 built this\n%s", sent.c_str());

    long long size = 0;
    long long sizeBack = 0;
    bool const good = sendBothWays(size, sizeBack);
    std::string const returned = good ? currentModel() : "";
    while (Pool::hasInstance())
        Pool::destruct();
    if (!good) {
        std::fputs("assembly: the model did not come back.\n", stderr);
        return EXIT_FAILURE;
    }

    bool const same = sent == returned && size == sizeBack;
    std::printf("== Process 2 took it in %lld bytes and sent it back in %lld\n", size, sizeBack);
    if (!same)
        std::printf("%s", returned.c_str());
    std::printf("== What came back is %s.\n", same ? "the same" : "NOT the same");
    return same ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int count, char ** arguments)
{
    if (count == 1)
        return sendGearbox();
    if (count == 5 && std::strcmp(arguments[1], "mirror") == 0)
        return mirror(arguments[2], arguments[3], arguments[4]);
    std::fputs("usage: assembly\n", stderr);
    return EXIT_FAILURE;
}
