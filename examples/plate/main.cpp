// Builds the geometry of a plate, sends it to a second process through shared memory, and compares
// what the two processes see.
//
// The second process is this program again, started with the name of the segment and the size of
// the model in it. A host that runs translators leaves all of this to ClientIn and ClientOut, which
// start the other process, tell it where the model is and end it.
#include "build_plate.h"
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

/// Says what the last exchange failed of; true when it did not.
bool exchanged(char const * what)
{
    if (Server::exchangeFailure().empty())
        return true;
    std::fprintf(stderr, "plate: %s: %s\n", what, Server::exchangeFailure().c_str());
    return false;
}

std::string currentGeometry()
{
    return plate::geometryText(*Pool::getInstance()->currentSubPool());
}

/// Reads a pipe to its end.
std::string readAll(int pipe)
{
    std::string result;
    char block[4096];
    for (ssize_t size = 0; (size = read(pipe, block, sizeof(block))) > 0;)
        result.append(block, static_cast<std::size_t>(size));
    return result;
}

/// The second process: rebuilds the model of a segment and prints it.
int readPlate(char const * segment, char const * size)
{
    Pool::construct("received");
    Server::readSharedMem(segment, std::strtoll(size, nullptr, 10));
    bool const good = exchanged("reading the model");
    if (good)
        std::fputs(currentGeometry().c_str(), stdout);
    Server::unmapSharedMemory(true);
    Pool::destruct();
    return good ? EXIT_SUCCESS : EXIT_FAILURE;
}

/// Starts this program as the second process and gives what it printed. False when it failed.
bool runReader(std::string segment, long long size, std::string & printed)
{
    int ends[2];
    if (pipe(ends) != 0) {
        std::perror("plate: pipe");
        return false;
    }
    posix_spawn_file_actions_t actions;
    posix_spawn_file_actions_init(&actions);
    posix_spawn_file_actions_adddup2(&actions, ends[1], STDOUT_FILENO);
    posix_spawn_file_actions_addclose(&actions, ends[0]);
    posix_spawn_file_actions_addclose(&actions, ends[1]);

    std::string program = "plate";
    std::string command = "read";
    std::string sizeText = std::to_string(size);
    char * const arguments[] = {program.data(), command.data(), segment.data(), sizeText.data(),
                                nullptr};
    pid_t process = 0;
    int const error =
        posix_spawn(&process, "/proc/self/exe", &actions, nullptr, arguments, environ);
    posix_spawn_file_actions_destroy(&actions);
    close(ends[1]);
    if (error == 0)
        printed = readAll(ends[0]);
    close(ends[0]);
    if (error != 0) {
        std::fprintf(stderr, "plate: the second process did not start: %s\n", std::strerror(error));
        return false;
    }
    int status = 0;
    return waitpid(process, &status, 0) == process && WIFEXITED(status) &&
           WEXITSTATUS(status) == EXIT_SUCCESS;
}

/// The first process: builds the model, sends it, and compares.
int sendPlate()
{
    Pool::construct("plate");
    plate::buildPlate();
    std::string const sent = currentGeometry();
    std::printf("== Process 1 built this\n%s", sent.c_str());

    // The segment stands until it is released; its name is for this run alone.
    std::string const segment = "plate_" + std::to_string(getpid());
    long long const size = Server::writeSharedMem(segment);
    std::string received;
    bool const good = exchanged("writing the model") && runReader(segment, size, received);
    Server::unmapSharedMemory(true);
    Pool::destruct();
    if (!good) {
        std::fputs("plate: the model did not arrive.\n", stderr);
        return EXIT_FAILURE;
    }

    std::printf("== Process 2 got this, in %lld bytes\n%s", size, received.c_str());
    bool const same = sent == received;
    std::printf("== The two are %s.\n", same ? "the same" : "NOT the same");
    return same ? EXIT_SUCCESS : EXIT_FAILURE;
}

} // namespace

int main(int count, char ** arguments)
{
    if (count == 1)
        return sendPlate();
    if (count == 4 && std::strcmp(arguments[1], "read") == 0)
        return readPlate(arguments[2], arguments[3]);
    std::fputs("usage: plate\n", stderr);
    return EXIT_FAILURE;
}
