// A translator made with the kit whose functions do what the file's name says, for tests of the
// kit.
//
//   succeed.*          make three points, with all kinds of messages on the way
//   geometry.*         make no points but carriers, as kit_geometry.h says
//   product.* and others, as kit_product.h says
//   *facets.*          make meshes, as kit_facets.h says
//   controls.*         log words with control characters
//   letters.*          log words with bytes that are none, be they text or not
//   fail-<status>.*    throw a Failure with that status, after one point and a warning
//   throw-standard.*   throw a standard exception
//   throw-memory.*     run out of memory
//   throw-other.*      throw something else
//   end-<how>.*        tell phase "mapping" and entity "#12", then end as `endAs` says
//   place-throw-*.*    the same before what "throw-*" does
//   place.*            tell phases and entities, and end without an answer
//   place-hostile.*    tell a phase and an entity that are long and drive a terminal
//   place-refused.*    tell the same as end-*, and fail
//   print.*            print by every means on the standard streams, then do as "succeed"
//   crash.*            fault
//   work.*             make the file "<path>.working", then work forever
//   stuck.*            the same, and nothing but a kill ends it
//   write-and-<what>.* on export: write half of a file, then "fail", "work" or "die"
//   options.*          tell the options "text", "integer", "number" and "flag" in the log
//   names.*            tell names of features and texts where metadata alone is wanted, and in
//                      the log whether it is; "many-names" tells a thousand features
//   flood.*            tell its progress a hundred thousand times
#include "process/kit_facets.h"
#include "process/kit_geometry.h"
#include "process/kit_product.h"

#include <keld-transl/model/point3d.h>
#include <keld-translator-kit/translator.h>

#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <filesystem>
#include <fstream>
#include <iostream>
#include <memory>
#include <new>
#include <stdexcept>
#include <sys/resource.h>
#include <unistd.h>
#include <vector>

/// Under sanitizers, too, this translator is to die of the signal that a test asks for. Their
/// library looks the function up by its name.
extern "C" __attribute__((visibility("default"))) char const * __asan_default_options();

extern "C" char const * __asan_default_options()
{
    return "handle_segv=0";
}

namespace {

using translator_kit::Failure;
using translator_kit::OutputFile;
using translator_kit::Reason;
using translator_kit::Run;

[[noreturn]] void workForever(std::string const & path)
{
    std::ofstream{path + ".working"};
    for (;;)
        pause();
}

void ignoreTermination()
{
    for (int const signal : {SIGTERM, SIGINT, SIGHUP})
        std::signal(signal, SIG_IGN);
}

/// Takes memory until somebody ends that.
[[noreturn]] void eatMemory()
{
    constexpr std::size_t Block = 1 << 20;
    constexpr int Most = 1000; // blocks, should nobody
    std::vector<std::unique_ptr<char[]>> blocks;
    for (int i = 0; i < Most; ++i) {
        blocks.emplace_back(new char[Block]);
        std::memset(blocks.back().get(), 1, Block);
    }
    for (;;)
        pause();
}

void noCoreFile()
{
    rlimit const noCore = {0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
}

void endAs(std::string const & how)
{
    noCoreFile();
    if (how == "abort")
        std::abort();
    else if (how == "segv")
        raise(SIGSEGV);
    else if (how == "kill")
        raise(SIGKILL);
    else if (how == "exit")
        std::exit(3);
    else if (how == "quietly")
        _exit(0);
    else if (how == "terminate")
        std::terminate();
    else if (how == "hang")
        for (;;)
            pause();
    else if (how == "spin")
        for (;;)
            asm volatile("");
    else if (how == "ignore")
        for (ignoreTermination();;)
            pause();
    else if (how == "memory")
        eatMemory();
}

void tellPlaces(Run & run)
{
    run.phase("parse");
    run.at("#1");
    run.phase("mapping");
    _exit(0);
}

void tellHostilePlace(Run & run)
{
    run.phase("\x1b[2J" + std::string(1000, 'p'));
    run.at("\a\n" + std::string(10000, '#'));
    _exit(0);
}

void printEverywhere()
{
    std::printf("by printf\n");
    std::fflush(stdout);
    std::cout << "by a stream" << std::endl;
    std::string const words = "by descriptor\n";
    if (write(STDOUT_FILENO, words.data(), words.size()) < 0)
        throw std::runtime_error("standard output is closed");
    std::fprintf(stderr, "as an error\n");
    std::printf("at the end\n"); // goes out when the process exits
}

[[noreturn]] void crash()
{
    noCoreFile();
    raise(SIGSEGV);
    _exit(0);
}

template <class T> std::string textOf(std::optional<T> const & value)
{
    return value ? std::to_string(*value) : "none";
}

void tellOptions(Run & run)
{
    run.message("text " + run.options().text("text").value_or("none"));
    run.message("integer " + textOf(run.options().integer("integer")));
    run.message("number " + textOf(run.options().number("number")));
    run.message("flag " + textOf(run.options().flag("flag")));
}

void tellNames(Run & run, int features)
{
    run.message(run.metadata() != nullptr ? "metadata alone" : "the whole model");
    if (run.metadata() == nullptr)
        return;
    run.metadata()->addFeatureType("HOLE 7");
    run.metadata()->addFeatureType("FILLET at HOLE");
    for (int i = 0; i < features; ++i)
        run.metadata()->addData(transl_tk::FeatureCounts, "Pocket " + std::to_string(i));
    run.metadata()->addData(transl_tk::FeatureCounts, std::string("bell\a"));
    run.metadata()->addData(transl_tk::FeatureCounts, std::string("bell\a"));
    run.metadata()->addData(transl_tk::TextList, std::string("steel"));
    run.metadata()->addData(transl_tk::TextList, std::string("tab\t"));
    run.metadata()->addData(static_cast<transl_tk::DataBaseType>(1234), 5);
}

void doAsNamed(std::string const & path, Run & run)
{
    std::string name = std::filesystem::path(path).stem();
    if (name.compare(0, 4, "end-") == 0 || name == "place-refused" ||
        name.compare(0, 12, "place-throw-") == 0) {
        run.phase("mapping");
        run.at("#12");
        name.erase(0, name.compare(0, 12, "place-throw-") == 0 ? 6 : 0);
    }
    if (name.compare(0, 4, "end-") == 0)
        return endAs(name.substr(4));
    if (name == "print") {
        printEverywhere();
        name = "succeed";
    }
    if (name == "succeed") {
        run.progress(0);
        run.status(7);
        run.alive();
        run.message("a message");
        run.warning("a warning");
        run.error("an error");
        run.progress(100);
    } else if (name == "controls") {
        run.message("\x1b[2J\a \x01\x1f\x7f\r\t");
        run.warning("two\nlines");
        run.message("C1 \xc2\x80\xc2\x9b"
                    "31m\xc2\x9f");
    } else if (name == "letters") {
        run.message(" ~\\ \xc2\xa0 \xc3\xa4 \xe2\x82\xac \xff\xc0\xc2 \xc2");
    } else if (name.compare(0, 5, "fail-") == 0) {
        run.warning("a warning");
        throw Failure(static_cast<Reason>(std::stoi(name.substr(5))), "as the name says");
    } else if (name == "throw-standard") {
        throw std::runtime_error("a standard exception");
    } else if (name == "throw-memory") {
        throw std::bad_alloc();
    } else if (name == "throw-other") {
        throw 42;
    } else if (name == "crash") {
        crash();
    } else if (name == "place") {
        tellPlaces(run);
    } else if (name == "place-hostile") {
        tellHostilePlace(run);
    } else if (name == "place-refused") {
        throw Failure(Reason::Failed, "refused " + run.place());
    } else if (name == "work") {
        workForever(path);
    } else if (name == "stuck") {
        ignoreTermination();
        workForever(path);
    } else if (name == "options") {
        tellOptions(run);
    } else if (name == "names") {
        tellNames(run, 1);
    } else if (name == "many-names") {
        tellNames(run, 1000);
    } else if (name == "flood") {
        for (int i = 0; i < 100000; ++i)
            run.progress(i / 2 % 100);
    }
}

void readFile(std::string const & path, Run & run)
{
    std::string const name = std::filesystem::path(path).stem();
    if (name == "geometry")
        return tests::makeCountedGeometry();
    if (tests::makeProduct(name))
        return;
    if (name.find("facets") != std::string::npos)
        return tests::makeFacets(name);
    for (int i = 1; i <= 3; ++i)
        transl_tk::Point3D::create(0, i, 0, 0);
    doAsNamed(path, run);
}

void writeFile(std::string const & path, Run & run)
{
    std::string const name = std::filesystem::path(path).stem();
    OutputFile file(path);
    file.write("half", 4);
    if (name == "write-and-fail")
        throw Failure(Reason::ExportFailed, "as the name says");
    if (name == "write-and-work")
        workForever(path);
    if (name == "write-and-die")
        raise(SIGKILL);
    doAsNamed(path, run);
    file.write(" whole\n", 7);
    file.commit();
}

} // namespace

int main()
{
    return translator_kit::run({"kit_translator", readFile, writeFile});
}
