#include "unit/common/child.h"

#include <array>
#include <chrono>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <sys/wait.h>
#include <thread>
#include <unistd.h>

namespace tests {

namespace {

constexpr std::string_view s_Option = "--child=";

std::map<std::string, int (*)(int, char **), std::less<>> & children()
{
    static std::map<std::string, int (*)(int, char **), std::less<>> known;
    return known;
}

} // namespace

ChildRegistration::ChildRegistration(char const * name, int (*body)(int, char **))
{
    children().emplace(name, body);
}

std::string ownPath()
{
    return std::filesystem::read_symlink("/proc/self/exe").string();
}

std::string childCommand(std::string const & name)
{
    return shellQuoted(ownPath()) + " " + std::string(s_Option) + name;
}

std::string shellQuoted(std::string_view text)
{
    std::string result = "'";
    for (char character : text) {
        if (character == '\'')
            result += "'\\''";
        else
            result += character;
    }
    return result + "'";
}

std::string shell(std::string const & script)
{
    return "/bin/sh -c " + shellQuoted(script);
}

void writeScript(std::string const & path, std::string const & text)
{
    std::ofstream(path) << text;
    std::filesystem::permissions(path, std::filesystem::perms::owner_all);
}

std::string contentOf(std::string const & path)
{
    std::ifstream file(path, std::ios::binary);
    std::ostringstream text;
    text << file.rdbuf();
    return text.str();
}

int statusOfFork(std::function<void()> const & body)
{
    std::fflush(nullptr);
    pid_t const child = ::fork();
    if (child == 0) {
        body();
        std::fflush(nullptr);
        ::_exit(::testing::Test::HasFailure() ? 1 : 0);
    }
    int status = 0;
    EXPECT_EQ(::waitpid(child, &status, 0), child);
    return status;
}

void expectWellInFork(std::function<void()> const & body)
{
    int const status = statusOfFork(body);
    EXPECT_TRUE(WIFEXITED(status)) << "died of signal " << WTERMSIG(status);
    EXPECT_EQ(WEXITSTATUS(status), 0);
}

bool hasGone(pid_t id)
{
    std::string const text = contentOf("/proc/" + std::to_string(id) + "/stat");
    size_t const close = text.rfind(") ");
    return close == std::string::npos || text[close + 2] == 'Z';
}

bool comesTrue(std::function<bool()> const & condition)
{
    using namespace std::chrono_literals;
    auto const limit = std::chrono::steady_clock::now() + 10s;
    while (!condition()) {
        if (std::chrono::steady_clock::now() > limit)
            return false;
        std::this_thread::sleep_for(2ms);
    }
    return true;
}

} // namespace tests

int main(int argc, char ** argv)
{
    std::string_view const first = argc > 1 ? argv[1] : "";
    if (first.starts_with(tests::s_Option)) {
        auto const found = tests::children().find(first.substr(tests::s_Option.size()));
        return found == tests::children().end() ? 127 : found->second(argc - 2, argv + 2);
    }
    ::testing::InitGoogleTest(&argc, argv);
    return RUN_ALL_TESTS();
}
