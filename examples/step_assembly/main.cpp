// Writes a STEP file (AP242, in inches) of a machine vise: an assembly three levels deep, in which
// parts and sub-assemblies stand at several places, with every kind of surface and curve that a
// part in a STEP file has, with colours, layers and materials. It also measures such files, with
// the kernel alone, and compares two of them.
#include "build_shapes.h"
#include "measure.h"
#include "write_step.h"

#include <Message.hxx>
#include <Message_Messenger.hxx>
#include <Message_PrinterOStream.hxx>
#include <Standard_Failure.hxx>
#include <charconv>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

char const * const usage = R"(usage: step_assembly FILE               write a machine vise
       step_assembly --copies N FILE    N vises, each of parts of its own, on a table
       step_assembly --measure FILE     print what a STEP file holds, read by the kernel
       step_assembly --compare FILE FILE
                                        the same of two files; fails where they differ
)";

int fail(char const * what)
{
    std::fprintf(stderr, "step_assembly: %s\n", what);
    return EXIT_FAILURE;
}

int write(int copies, std::string const & path)
{
    vise::writeStep(vise::drawVises(copies), path);
    std::printf("Wrote %s\n", path.c_str());
    return EXIT_SUCCESS;
}

int compare(std::string const & first, std::string const & second)
{
    bool const same = vise::compare(vise::measure(first), vise::measure(second));
    std::printf("The files %s.\n", same ? "agree" : "DIFFER");
    return same ? EXIT_SUCCESS : EXIT_FAILURE;
}

/// 0 where the text is no number above 0.
int countFrom(std::string const & text)
{
    int count = 0;
    char const * const end = text.data() + text.size();
    auto const [last, error] = std::from_chars(text.data(), end, count);
    return error == std::errc() && last == end && count > 0 ? count : 0;
}

int run(std::vector<std::string> const & arguments)
{
    if (arguments.size() == 1 && arguments[0].rfind("--", 0) != 0)
        return write(1, arguments[0]);
    if (arguments.size() == 3 && arguments[0] == "--copies" && countFrom(arguments[1]) > 0)
        return write(countFrom(arguments[1]), arguments[2]);
    if (arguments.size() == 2 && arguments[0] == "--measure") {
        vise::print(vise::measure(arguments[1]));
        return EXIT_SUCCESS;
    }
    if (arguments.size() == 3 && arguments[0] == "--compare")
        return compare(arguments[1], arguments[2]);
    std::fputs(usage, stderr);
    return EXIT_FAILURE;
}

} // namespace

int main(int count, char ** arguments)
{
    Message::DefaultMessenger()->RemovePrinters(STANDARD_TYPE(Message_PrinterOStream));
    try {
        return run({arguments + 1, arguments + count});
    } catch (vise::BuildFailure const & failure) {
        return fail(failure.what());
    } catch (Standard_Failure const & failure) {
        return fail(failure.GetMessageString());
    }
}
