#include "support/leftovers.h"

#include <algorithm>
#include <array>
#include <cctype>
#include <cerrno>
#include <cfenv>
#include <chrono>
#include <clocale>
#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <fstream>
#include <gtest/gtest.h>
#include <iterator>
#include <locale>
#include <map>
#include <sstream>
#include <sys/stat.h>
#include <system_error>
#include <thread>
#include <unistd.h>

namespace tests {

namespace {

namespace fs = std::filesystem;

constexpr char s_SharedMemoryDirectory[] = "/dev/shm";

bool isNumber(std::string_view text)
{
    return !text.empty() && std::all_of(text.begin(), text.end(), [](unsigned char character) {
        return std::isdigit(character) != 0;
    });
}

std::set<std::string> namesIn(fs::path const & directory)
{
    std::set<std::string> names;
    std::error_code error;
    for (fs::directory_iterator entry(directory, error), end; !error && entry != end;
         entry.increment(error))
        names.insert(entry->path().filename().string());
    return names;
}

std::map<int, std::string> openDescriptors()
{
    std::map<int, std::string> found;
    for (std::string const & name : namesIn("/proc/self/fd")) {
        int const descriptor = std::stoi(name);
        std::array<char, 4096> target{};
        ssize_t const length =
            ::readlink(("/proc/self/fd/" + name).c_str(), target.data(), target.size());
        // The descriptor of the listing itself is closed by now.
        if (length > 0 && ::fcntl(descriptor, F_GETFD) != -1)
            found.emplace(descriptor, std::string(target.data(), static_cast<size_t>(length)));
    }
    return found;
}

/// A description of each child that has not been reaped, by process id.
std::map<std::string, std::string> childProcesses()
{
    std::map<std::string, std::string> found;
    for (std::string const & name : namesIn("/proc")) {
        if (!isNumber(name))
            continue;
        std::ifstream file("/proc/" + name + "/stat");
        // Reads nothing of a process that goes at this moment.
        std::array<char, 1024> block{};
        file.read(block.data(), block.size());
        std::string const text(block.data(), static_cast<size_t>(file.gcount()));
        // The command stands in parentheses and may hold blanks and parentheses itself.
        size_t const open = text.find('(');
        size_t const close = text.rfind(')');
        if (open == std::string::npos || close == std::string::npos)
            continue;
        char state = '?';
        pid_t parent = 0;
        std::istringstream rest(text.substr(close + 1));
        rest >> state >> parent;
        if (parent == ::getpid())
            found.emplace(name, name + " " + text.substr(open, close - open + 1) +
                                    (state == 'Z' ? " zombie" : " running"));
    }
    return found;
}

struct Disposition
{
    void (*m_Handler)(int) = nullptr;
    int m_Flags = 0;
    std::set<int> m_Mask;

    bool operator==(Disposition const &) const = default;
};

std::set<int> signalsIn(sigset_t const & signals)
{
    std::set<int> found;
    for (int number = 1; number < NSIG; ++number) {
        if (::sigismember(&signals, number) == 1)
            found.insert(number);
    }
    return found;
}

std::map<int, Disposition> signalDispositions()
{
    std::map<int, Disposition> found;
    for (int number = 1; number < NSIG; ++number) {
        struct sigaction action = {};
        if (::sigaction(number, nullptr, &action) != 0)
            continue;
        Disposition disposition{action.sa_handler, action.sa_flags, signalsIn(action.sa_mask)};
        // What else a default or ignored signal remembers has no effect, and one bit is the C
        // library's own.
        constexpr int restorer = 0x04000000;
        disposition.m_Flags &= ~restorer;
        if (action.sa_handler == SIG_DFL || action.sa_handler == SIG_IGN) {
            disposition.m_Flags &= SA_NOCLDSTOP | SA_NOCLDWAIT;
            disposition.m_Mask.clear();
        }
        found.emplace(number, disposition);
    }
    return found;
}

std::set<std::string> environmentEntries()
{
    std::set<std::string> found;
    for (char ** entry = environ; entry != nullptr && *entry != nullptr; ++entry)
        found.insert(*entry);
    return found;
}

std::string localeNames()
{
    char const * const name = std::setlocale(LC_ALL, nullptr);
    return std::string(name == nullptr ? "" : name) + ", C++: " + std::locale().name();
}

/// Rounding, trapped exceptions and the treatment of tiny numbers, without the sticky flags that
/// any arithmetic sets.
std::array<unsigned, 2> floatingPointControl()
{
    std::fenv_t state = {};
    std::fegetenv(&state);
    constexpr unsigned stickyFlags = 0x3F;
    return {state.__control_word, state.__mxcsr & ~stickyFlags};
}

mode_t currentUmask()
{
    mode_t const mask = ::umask(077);
    ::umask(mask);
    return mask;
}

std::set<std::string> temporaryDirectories()
{
    std::set<std::string> found = {"/tmp"};
    for (char const * name : {"TMP", "TMPDIR", "TEMP", "TEMPDIR"}) {
        char const * const value = std::getenv(name);
        if (value != nullptr && *value != '\0')
            found.insert(fs::path(value).lexically_normal().string());
    }
    return found;
}

std::set<std::string> temporaryFiles(std::set<std::string> const & directories)
{
    std::set<std::string> found;
    for (std::string const & directory : directories) {
        for (std::string const & name : namesIn(directory)) {
            if (name.starts_with("vorn_") || name.starts_with("transl_tk_") ||
                name.starts_with("keld"))
                found.insert((fs::path(directory) / name).string());
        }
    }
    return found;
}

template <class Element>
std::set<Element> missingIn(std::set<Element> const & elements, std::set<Element> const & other)
{
    std::set<Element> missing;
    std::set_difference(elements.begin(), elements.end(), other.begin(), other.end(),
                        std::inserter(missing, missing.end()));
    return missing;
}

/// Whether a process holds a lock on the block `name` of shared memory through a descriptor that
/// this process does not have. Asks the kernel's list: a trial lock would disturb the holder.
bool isHeldElsewhere(std::string const & name)
{
    std::string const path = std::string(s_SharedMemoryDirectory) + "/" + name;
    struct stat status = {};
    if (::stat(path.c_str(), &status) == -1)
        return true;
    for (auto const & [descriptor, target] : openDescriptors()) {
        struct stat own = {};
        if (::fstat(descriptor, &own) == 0 && own.st_ino == status.st_ino &&
            own.st_dev == status.st_dev)
            return false;
    }
    std::string const inode = ":" + std::to_string(status.st_ino);
    std::ifstream locks("/proc/locks");
    std::string word;
    while (locks >> word) {
        if (word.ends_with(inode) && std::count(word.begin(), word.end(), ':') == 2)
            return true;
    }
    return false;
}

/// Whether a number in the name of `path` is the id of a living process other than this one.
bool isNamedAfterAnotherProcess(std::string const & path)
{
    std::string const name = fs::path(path).filename().string();
    for (size_t begin = 0; begin < name.size();) {
        size_t end = begin;
        while (end < name.size() && std::isdigit(static_cast<unsigned char>(name[end])) != 0)
            ++end;
        std::string const number = name.substr(begin, end - begin);
        if (!number.empty() && number != std::to_string(::getpid()) &&
            fs::exists("/proc/" + number))
            return true;
        begin = end + 1;
    }
    return false;
}

template <class Condition> void waitFor(Condition condition)
{
    using namespace std::chrono_literals;
    auto const limit = std::chrono::steady_clock::now() + 5s;
    while (!condition() && std::chrono::steady_clock::now() < limit)
        std::this_thread::sleep_for(5ms);
}

} // namespace

struct Surroundings
{
    std::map<int, std::string> m_Descriptors = openDescriptors();
    std::set<std::string> m_Threads = namesIn("/proc/self/task");
    std::map<std::string, std::string> m_Children = childProcesses();
    std::map<int, Disposition> m_Dispositions = signalDispositions();
    std::set<int> m_BlockedSignals;
    std::set<int> m_PendingSignals;
    mode_t m_Umask = currentUmask();
    std::string m_WorkingDirectory;
    std::set<std::string> m_Environment = environmentEntries();
    std::string m_Locale = localeNames();
    std::array<unsigned, 2> m_FloatingPoint = floatingPointControl();
    std::set<std::string> m_SharedMemory = sharedMemoryNames();
    std::set<std::string> m_TemporaryDirectories = temporaryDirectories();
    std::set<std::string> m_TemporaryFiles = temporaryFiles(m_TemporaryDirectories);

    Surroundings()
    {
        sigset_t signals;
        ::pthread_sigmask(SIG_SETMASK, nullptr, &signals);
        m_BlockedSignals = signalsIn(signals);
        ::sigpending(&signals);
        m_PendingSignals = signalsIn(signals);
        std::error_code error;
        m_WorkingDirectory = fs::current_path(error).string();
    }
};

namespace {

void compareDescriptors(Surroundings const & before, std::vector<std::string> & found)
{
    auto const now = openDescriptors();
    for (auto const & [descriptor, target] : now) {
        auto const old = before.m_Descriptors.find(descriptor);
        if (old == before.m_Descriptors.end())
            found.push_back("descriptor " + std::to_string(descriptor) + " is open: " + target);
        else if (old->second != target)
            found.push_back("descriptor " + std::to_string(descriptor) + " was " + old->second +
                            " and is " + target);
    }
    for (auto const & [descriptor, target] : before.m_Descriptors) {
        if (!now.contains(descriptor))
            found.push_back("descriptor " + std::to_string(descriptor) + " was closed: " + target);
    }
}

void compareProcess(Surroundings const & before, std::vector<std::string> & found)
{
    // A joined thread stays in the list for a moment.
    waitFor([&before] { return namesIn("/proc/self/task") == before.m_Threads; });
    for (std::string const & thread : missingIn(namesIn("/proc/self/task"), before.m_Threads))
        found.push_back("thread " + thread + " is running");
    for (auto const & [process, words] : childProcesses()) {
        if (!before.m_Children.contains(process))
            found.push_back("a child process is left: " + words);
    }
    if (currentUmask() != before.m_Umask)
        found.emplace_back("the umask was changed");
    std::error_code error;
    if (fs::current_path(error).string() != before.m_WorkingDirectory)
        found.push_back("the working directory is no longer " + before.m_WorkingDirectory);
    auto const environment = environmentEntries();
    for (std::string const & entry : missingIn(environment, before.m_Environment))
        found.push_back("the environment has a new entry: " + entry);
    for (std::string const & entry : missingIn(before.m_Environment, environment))
        found.push_back("the environment has lost an entry: " + entry);
    if (localeNames() != before.m_Locale)
        found.push_back("the locale was " + before.m_Locale + " and is " + localeNames());
    if (floatingPointControl() != before.m_FloatingPoint)
        found.emplace_back("the floating-point control was changed");
}

void compareSignals(Surroundings const & before, Surroundings const & now,
                    std::vector<std::string> & found)
{
    for (auto const & [number, disposition] : now.m_Dispositions) {
        auto const old = before.m_Dispositions.find(number);
        if (old == before.m_Dispositions.end() || !(old->second == disposition))
            found.push_back("the disposition of signal " + std::to_string(number) + " was changed");
    }
    for (int number : missingIn(now.m_BlockedSignals, before.m_BlockedSignals))
        found.push_back("signal " + std::to_string(number) + " is blocked");
    for (int number : missingIn(before.m_BlockedSignals, now.m_BlockedSignals))
        found.push_back("signal " + std::to_string(number) + " is no longer blocked");
    for (int number : missingIn(now.m_PendingSignals, before.m_PendingSignals))
        found.push_back("signal " + std::to_string(number) + " is pending");
}

std::set<std::string> newSharedMemory(Surroundings const & before)
{
    auto names = missingIn(sharedMemoryNames(), before.m_SharedMemory);
    std::erase_if(names, [](std::string const & name) {
        return isHeldElsewhere(name) || isNamedAfterAnotherProcess(name);
    });
    return names;
}

std::set<std::string> newTemporaryFiles(Surroundings const & before)
{
    auto paths = missingIn(temporaryFiles(before.m_TemporaryDirectories), before.m_TemporaryFiles);
    std::erase_if(paths, isNamedAfterAnotherProcess);
    return paths;
}

void compareNames(Surroundings const & before, std::vector<std::string> & found)
{
    std::set<std::string> names;
    std::set<std::string> files;
    waitFor([&] {
        names = newSharedMemory(before);
        files = newTemporaryFiles(before);
        return names.empty() && files.empty();
    });
    for (std::string const & name : names)
        found.push_back("the name " + name + " is left in /dev/shm");
    for (std::string const & path : files)
        found.push_back("the file " + path + " is left");
}

} // namespace

std::set<std::string> sharedMemoryNames()
{
    return namesIn(s_SharedMemoryDirectory);
}

LeftoverGuard::LeftoverGuard() : m_Before(std::make_unique<Surroundings const>()) {}

LeftoverGuard::~LeftoverGuard()
{
    for (std::string const & difference : differences())
        ADD_FAILURE() << "left behind: " << difference;
}

std::vector<std::string> LeftoverGuard::differences() const
{
    std::vector<std::string> found;
    compareDescriptors(*m_Before, found);
    compareProcess(*m_Before, found);
    compareSignals(*m_Before, Surroundings(), found);
    compareNames(*m_Before, found);
    return found;
}

TemporaryDirectory::TemporaryDirectory(fs::path const & parent, std::string const & prefix)
{
    std::string pattern = (parent / (prefix + "XXXXXX")).string();
    if (::mkdtemp(pattern.data()) == nullptr)
        throw std::system_error(errno, std::generic_category(), pattern);
    m_Path = pattern;
}

TemporaryDirectory::~TemporaryDirectory()
{
    std::error_code error;
    fs::remove_all(m_Path, error);
    if (error)
        ADD_FAILURE() << m_Path << " could not be removed: " << error.message();
}

std::set<std::string> TemporaryDirectory::names() const
{
    return namesIn(m_Path);
}

ScopedEnvironment::ScopedEnvironment(std::string name, std::optional<std::string> const & value)
    : m_Name(std::move(name))
{
    char const * const old = std::getenv(m_Name.c_str());
    if (old != nullptr)
        m_Old = old;
    if (value.has_value())
        ::setenv(m_Name.c_str(), value->c_str(), 1);
    else
        ::unsetenv(m_Name.c_str());
}

ScopedEnvironment::~ScopedEnvironment()
{
    if (m_Old.has_value())
        ::setenv(m_Name.c_str(), m_Old->c_str(), 1);
    else
        ::unsetenv(m_Name.c_str());
}

} // namespace tests
