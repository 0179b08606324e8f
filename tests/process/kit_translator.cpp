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
//   crash.*            fault
//   work.*             make the file "<path>.working", then work forever
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
#include <filesystem>
#include <fstream>
#include <new>
#include <stdexcept>
#include <sys/resource.h>
#include <unistd.h>

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

[[noreturn]] void crash()
{
    rlimit const noCore = {0, 0};
    setrlimit(RLIMIT_CORE, &noCore);
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
    std::string const name = std::filesystem::path(path).stem();
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
    } else if (name == "work") {
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
