// Writes a STEP file (AP242) of a machine vise: an assembly three levels deep, in which
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

char const * const usage = R"(usage: step_assembly [--millimetres] [--copies N] FILE
                                        write a machine vise, or N of them, each of parts of its
                                        own, in inches, or in millimetres and with offset curves
       step_assembly --measure FILE     print what a STEP file holds, read by the kernel
       step_assembly --compare FILE FILE
                                        the same of two files; fails where they differ
)";

int fail(char const * what)
{
    std::fprintf(stderr, "step_assembly: %s\n", what);
    return EXIT_FAILURE;
}

int write(int copies, vise::Unit unit, std::string const & path)
{
    vise::writeStep(vise::drawVises(copies), unit, path);
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

/// What is to be written, as the arguments say.
struct Request
{
    int copies = 1;
    vise::Unit unit = vise::Unit::Inch;
    std::string path;
};

/// The path is empty where the arguments make no sense.
Request requestFrom(std::vector<std::string> const & arguments)
{
    Request request;
    std::size_t next = 0;
    if (next < arguments.size() && arguments[next] == "--millimetres") {
        request.unit = vise::Unit::Millimetre;
        ++next;
    }
    if (next + 1 < arguments.size() && arguments[next] == "--copies") {
        request.copies = countFrom(arguments[next + 1]);
        next += 2;
    }
    if (next + 1 == arguments.size() && request.copies > 0 && arguments[next].rfind("--", 0) != 0)
        request.path = arguments[next];
    return request;
}

int run(std::vector<std::string> const & arguments)
{
    if (arguments.size() == 2 && arguments[0] == "--measure") {
        vise::print(vise::measure(arguments[1]));
        return EXIT_SUCCESS;
    }
    if (arguments.size() == 3 && arguments[0] == "--compare")
        return compare(arguments[1], arguments[2]);
    Request const request = requestFrom(arguments);
    if (!request.path.empty())
        return write(request.copies, request.unit, request.path);
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
