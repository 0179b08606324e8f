#ifndef KELD_TESTS_SUPPORT_LEFTOVERS_H
#define KELD_TESTS_SUPPORT_LEFTOVERS_H

#include <filesystem>
#include <memory>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace tests {

/// Names of the blocks of shared memory that exist on this machine, without a leading slash.
std::set<std::string> sharedMemoryNames();

/// Everything about this process, and about the places it leaves files in, that a guest in a
/// process must leave as it was.
struct Surroundings;

/// Records the process's surroundings, and adds a test failure for each difference at its end of
/// life: descriptors, threads, children (zombies too), signal dispositions, mask and pending
/// signals, umask, working directory, environment, locale, floating-point control, and new names in
/// /dev/shm and in the temporary directories.
///
/// Make it the first object of a test, so that it goes last. Names are those of the whole machine:
/// one that another living process holds or is named after does not count, nor does one that goes
/// within five seconds, so that tests may run side by side.
class LeftoverGuard
{
public:
    LeftoverGuard();
    ~LeftoverGuard();
    LeftoverGuard(LeftoverGuard const &) = delete;
    LeftoverGuard & operator=(LeftoverGuard const &) = delete;

    /// What differs at this moment, a sentence each; nothing is added to the test's failures.
    std::vector<std::string> differences() const;

private:
    std::unique_ptr<Surroundings const> m_Before;
};

/// A new, empty directory that goes with all its contents.
class TemporaryDirectory
{
public:
    /// `parent` exists; the directory's name begins with `prefix`.
    explicit TemporaryDirectory(std::filesystem::path const & parent = "/tmp",
                                std::string const & prefix = "unit-");
    ~TemporaryDirectory();
    TemporaryDirectory(TemporaryDirectory const &) = delete;
    TemporaryDirectory & operator=(TemporaryDirectory const &) = delete;

    std::filesystem::path const & path() const { return m_Path; }

    /// Path of `name` in the directory.
    std::string operator/(std::string_view name) const { return (m_Path / name).string(); }

    /// Names of what the directory holds.
    std::set<std::string> names() const;

private:
    std::filesystem::path m_Path;
};

/// Sets an environment variable, or removes it where no value is given, and puts the old state back
/// at its end of life.
class ScopedEnvironment
{
public:
    ScopedEnvironment(std::string name, std::optional<std::string> const & value);
    ~ScopedEnvironment();
    ScopedEnvironment(ScopedEnvironment const &) = delete;
    ScopedEnvironment & operator=(ScopedEnvironment const &) = delete;

private:
    std::string m_Name;
    std::optional<std::string> m_Old;
};

} // namespace tests

#endif
