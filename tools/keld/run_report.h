#ifndef KELD_TOOLS_RUN_REPORT_H
#define KELD_TOOLS_RUN_REPORT_H

#include <set>
#include <string>

namespace keld {

/// The toolkit's reports of this process: messages go to the console and, with a directory, tracing
/// lines to a report file.
class RunReport
{
public:
    /// Whether the end of the report says where it is. What goes wrong is said in any case.
    enum Manner { Announced, Silent };

    /// Makes `directory` when there is none; an empty one keeps no report file. Throws
    /// std::filesystem::filesystem_error.
    explicit RunReport(std::string const & directory, Manner manner = Announced);
    RunReport(RunReport const &) = delete;
    RunReport & operator=(RunReport const &) = delete;

    /// Writes the report file.
    ~RunReport();

    /// A directory below, made anew when it is not there, for what the translator of run `name` has
    /// to tell; its report would have the same name as the host's. Empty without a directory.
    std::string directoryFor(std::string const & name) const;

    /// The directory, with a separator at its end; empty without one.
    std::string const & directory() const { return m_Directory; }

private:
    std::string m_Directory; ///< with a separator at its end
    Manner m_Manner;
};

/// Names the crash dumps that translators leave in `directory` from its construction on.
class DumpWatch
{
public:
    /// An empty `directory` gets no dumps.
    explicit DumpWatch(std::string const & directory);

    /// Prints the path of each new dump on standard error.
    void print() const;

private:
    std::set<std::string> dumps() const;

    std::string m_Directory;
    std::set<std::string> m_Before;
};

} // namespace keld

#endif
