#include "process/keld_jobs_program.h"

#include <algorithm>
#include <fstream>
#include <pty.h>
#include <regex>
#include <thread>
#include <unistd.h>

namespace tests {

std::string withoutTimes(std::string const & text)
{
    static std::regex const time(" +([0-9]+\\.[0-9] s|time)");
    return std::regex_replace(text, time, " T");
}

std::vector<pid_t> childrenOf(pid_t process)
{
    std::string const number = std::to_string(process);
    std::ifstream list("/proc/" + number + "/task/" + number + "/children");
    std::vector<pid_t> children;
    for (pid_t child = 0; list >> child;)
        children.push_back(child);
    return children;
}

void wrapTranslator(KeldProgram const & keld, std::string const & name, std::string const & script)
{
    std::ofstream(keld.bin() + "/keld_" + name + ".sh")
        << "#!/bin/sh\nTRANSLATOR=\"${0%/*}/keld_" << name << "_linux_x86_64\"\n"
        << script << "\n";
}

std::string screenAfter(std::string const & bytes, std::size_t columns)
{
    std::vector<std::string> rows(1);
    std::size_t row = 0;
    std::size_t column = 0;
    for (std::size_t i = 0; i < bytes.size(); ++i) {
        if (bytes.compare(i, 2, "\x1b[") == 0) {
            std::size_t const end = bytes.find_first_of("ABCDHJK", i);
            std::size_t const number = std::strtoul(bytes.c_str() + i + 2, nullptr, 10);
            if (bytes[end] == 'A')
                row -= std::min(row, number);
            if (bytes[end] == 'J') {
                rows.resize(row + 1);
                rows[row].resize(column);
            }
            i = end;
        } else if (bytes[i] == '\r') {
            column = 0;
        } else if (bytes[i] == '\n' || column == columns) {
            ++row;
            i -= bytes[i] != '\n';
            column = 0;
        } else {
            rows[row].resize(std::max(rows[row].size(), column + 1), ' ');
            rows[row][column++] = bytes[i];
        }
        rows.resize(std::max(rows.size(), row + 1));
    }
    std::string screen;
    for (std::string & text : rows) {
        text.erase(text.find_last_not_of(' ') + 1);
        screen += text + "\n";
    }
    return screen;
}

std::string writtenToTerminal(KeldProgram & keld, unsigned short columns,
                              std::vector<std::string> const & arguments)
{
    int terminal = -1;
    int programEnd = -1;
    winsize const size = {24, columns, 0, 0};
    if (openpty(&terminal, &programEnd, nullptr, nullptr, &size) != 0)
        return "no terminal";
    keld.before([terminal, programEnd] {
        dup2(programEnd, STDERR_FILENO);
        close(terminal);
        close(programEnd);
    });
    std::string text;
    std::thread reader([&] {
        char block[4096];
        for (ssize_t count; (count = read(terminal, block, sizeof(block))) > 0;)
            text.append(block, static_cast<std::size_t>(count));
    });
    keld.run(arguments);
    close(programEnd);
    reader.join();
    close(terminal);
    return text;
}

} // namespace tests
