#ifndef KELD_TESTS_SUPPORT_CHILD_H
#define KELD_TESTS_SUPPORT_CHILD_H

#include <cerrno>
#include <sys/wait.h>
#include <unistd.h>
#include <utility>

namespace tests {

/// A second process for part of a test. Its body stands beside the parent's; what the body returns
/// is the process's exit code.
class Child
{
public:
    template <class Body> explicit Child(Body && body) : m_Id(::fork())
    {
        if (m_Id != 0)
            return;
        // A child that hangs must not hold up the suite.
        ::alarm(60);
        ::_exit(std::forward<Body>(body)());
    }
    Child(Child const &) = delete;
    Child & operator=(Child const &) = delete;
    ~Child()
    {
        if (m_Id > 0)
            wait();
    }

    pid_t id() const { return m_Id; }

    /// Waits for the end. The exit code, or minus the number of the signal that ended it.
    int wait()
    {
        int status = 0;
        while (::waitpid(m_Id, &status, 0) < 0 && errno == EINTR) {
        }
        m_Id = 0;
        return WIFEXITED(status) ? WEXITSTATUS(status) : -WTERMSIG(status);
    }

private:
    pid_t m_Id;
};

} // namespace tests

#endif
