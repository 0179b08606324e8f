#include "process/other_programs.h"

#include <cstdio>
#include <sys/wait.h>

namespace tests {

namespace {

std::string quoted(std::string const & word)
{
    std::string result = "'";
    for (char const c : word)
        result += c == '\'' ? std::string("'\\''") : std::string(1, c);
    return result + "'";
}

} // namespace

Answer answerOf(std::vector<std::string> const & command)
{
    std::string line;
    for (std::string const & word : command)
        line += quoted(word) + " ";
    Answer answer;
    std::FILE * const output = popen((line + "2>&1").c_str(), "r");
    char block[65536];
    for (std::size_t size = 0; (size = std::fread(block, 1, sizeof(block), output)) > 0;)
        answer.text.append(block, size);
    int const status = pclose(output);
    answer.code = WIFEXITED(status) ? WEXITSTATUS(status) : -1;
    while (waitpid(-1, nullptr, 0) > 0) {
    }
    return answer;
}

bool isThere(std::string const & program)
{
    return answerOf({"sh", "-c", "command -v \"$0\"", program}).code == 0;
}

std::string pythonSays(std::string const & path, std::string const & expression)
{
    std::string const script = "import json, sys\nsys.stdout.reconfigure(encoding='utf-8')\n"
                               "d = json.load(open(sys.argv[1], encoding='utf-8'))\nprint(" +
                               expression + ", end='')";
    return answerOf({"python3", "-c", script, path}).text;
}

std::string validatorSays(std::string const & path)
{
    Answer const answer = answerOf({"tidy", "-errors", "-quiet", path});
    if (answer.code == 0)
        return answer.text;
    return answer.text.empty() ? "tidy did not run" : answer.text;
}

} // namespace tests
