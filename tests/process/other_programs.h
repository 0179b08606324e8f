#ifndef KELD_TESTS_OTHER_PROGRAMS_H
#define KELD_TESTS_OTHER_PROGRAMS_H

#include <string>
#include <vector>

namespace tests {

/// What a program of this machine printed on both of its outputs, and its exit code.
struct Answer
{
    int code = -1;
    std::string text;
};

/// Runs a program that is found on the path, and waits for the ends of all processes of this one.
Answer answerOf(std::vector<std::string> const & command);

/// Whether a program is found on the path.
bool isThere(std::string const & program);

/// What python3 prints of `expression`, in which `d` is the JSON file `path` as it reads it.
std::string pythonSays(std::string const & path, std::string const & expression);

/// What the HTML validator finds wrong with the file `path`, errors and warnings.
std::string validatorSays(std::string const & path);

} // namespace tests

#endif
