#include "batch/batch.h"

#include "batch/batch_display.h"
#include "batch/batch_table.h"
#include "batch/leftovers.h"
#include "batch/signal_watch.h"
#include "batch/worker.h"
#include "import_file.h"
#include "interrupt.h"
#include "safe_text.h"

#include <algorithm>
#include <chrono>
#include <csignal>
#include <cstdio>
#include <filesystem>
#include <map>
#include <memory>
#include <set>
#include <system_error>
#include <unistd.h>

namespace keld {

namespace {

using Clock = std::chrono::steady_clock;
using Milliseconds = std::chrono::milliseconds;

constexpr Milliseconds WorkersPatience(400); // for their own cleaning up, after a signal

std::vector<std::string> safeNames(std::vector<std::string> const & files)
{
    std::vector<std::string> names;
    names.reserve(files.size());
    for (std::string const & file : files)
        names.push_back(file.empty() ? "\"\"" : terminalText(file));
    return names;
}

class Batch
{
public:
    explicit Batch(BatchArguments const & arguments)
        : m_Arguments(arguments), m_Names(safeNames(arguments.files)),
          m_Folders(reportFolders(arguments.files)),
          m_Display(ProgressDisplay::styleFor(arguments.common.quiet), m_Names)
    {
        m_Rows.resize(m_Names.size());
        for (std::size_t i = 0; i < m_Names.size(); ++i)
            m_Rows[i].name = m_Names[i];
    }

    /// Imports all files, with a row for each; 0, or the signal that stopped it.
    int run(std::vector<BatchRow> & rows)
    {
        while (m_Next < m_Names.size() || !m_Running.empty()) {
            while (m_Next < m_Names.size() && m_Running.size() < m_Arguments.jobs && start(m_Next))
                ++m_Next;
            m_Display.update();
            wait(m_Display.pause());
            if (int const signal = m_Signals.take()) {
                stop(signal);
                return signal;
            }
            readAll();
        }
        rows = std::move(m_Rows);
        return 0;
    }

private:
    struct Running
    {
        std::unique_ptr<Worker> worker;
        Clock::time_point start;
    };

    /// Starts a worker, or gives the file up. False when there may be one later, as others end.
    bool start(std::size_t file)
    {
        auto const start = Clock::now();
        try {
            m_Running[file] = {std::make_unique<Worker>([this] { leaveOthers(); },
                                                        [this, file](auto const & progress) {
                                                            return import(file, progress);
                                                        }),
                               start};
        } catch (std::system_error const & error) {
            if (!m_Running.empty())
                return false;
            m_Rows[file].result.reason = std::string(error.what()) + ".";
            report(file, "", "");
            return true;
        }
        m_Display.start(file);
        return true;
    }

    /// In a child: lets go of what belongs to the parent.
    void leaveOthers()
    {
        for (auto const & [file, running] : m_Running)
            running.worker->close();
        m_Signals.release();
        cleanUpOnInterrupt();
    }

    /// In a child.
    FileResult import(std::size_t file, std::function<void(int)> const & progress) const
    {
        ProgressDisplay::divert(progress);
        CommonArguments common = m_Arguments.common;
        if (!common.reportDirectory.empty())
            common.reportDirectory =
                std::filesystem::path(common.reportDirectory) / m_Folders[file];
        return importOneOfSeveral(common, {m_Arguments.files[file], m_Arguments.translator},
                                  m_Arguments.output, m_Arguments.tree);
    }

    void wait(int pause)
    {
        std::vector<pollfd> list = {{m_Signals.descriptor(), POLLIN, 0}};
        for (auto const & [file, running] : m_Running)
            running.worker->addTo(list);
        poll(list.data(), list.size(), pause);
    }

    void readAll()
    {
        for (auto entry = m_Running.begin(); entry != m_Running.end();) {
            auto const & [file, running] = *entry;
            Worker & worker = *running.worker;
            bool const hasEnded = worker.hasEnded(); // before what it said last is read
            worker.read();
            if (worker.percent() >= 0)
                m_Display.show(file, worker.percent());
            if (!hasEnded) {
                ++entry;
                continue;
            }
            m_Rows[file].result = worker.result();
            m_Rows[file].time =
                std::chrono::duration_cast<Milliseconds>(Clock::now() - running.start);
            std::size_t const ended = file;
            auto const gone = m_Running.extract(entry++);
            if (worker.endSignal() != 0) {
                endTranslators(processes());
                removeLeftovers(worker.process());
            }
            report(ended, worker.output().text(), worker.messages().text());
        }
    }

    void report(std::size_t file, std::string const & output, std::string const & messages)
    {
        BatchRow const & row = m_Rows[file];
        m_Display.finish(file, std::string(resultName(row.result)) + " " + timeText(row.time),
                         output, messages);
    }

    std::set<pid_t> processes() const
    {
        std::set<pid_t> result;
        for (auto const & [file, running] : m_Running)
            result.insert(running.worker->process());
        return result;
    }

    /// Ends all workers and their translators.
    void stop(int signal)
    {
        for (auto const & [file, running] : m_Running)
            running.worker->signal(signal);
        auto const limit = Clock::now() + WorkersPatience;
        std::set<pid_t> const workers = processes();
        while (!m_Running.empty() && Clock::now() < limit) {
            std::erase_if(m_Running,
                          [](auto const & entry) { return entry.second.worker->hasEnded(); });
            for (auto const & [file, running] : m_Running)
                running.worker->read();
            if (!m_Running.empty())
                poll(nullptr, 0, 2);
        }
        m_Running.clear();
        endTranslators({});
        for (pid_t const worker : workers)
            removeLeftovers(worker);
    }

    BatchArguments const & m_Arguments;
    std::vector<std::string> const m_Names; ///< as they are shown
    std::vector<std::string> const m_Folders;
    SignalWatch m_Signals;
    BatchDisplay m_Display;
    std::vector<BatchRow> m_Rows;
    std::size_t m_Next = 0;
    std::map<std::size_t, Running> m_Running; ///< by their places
};

ExitCode codeOfAll(std::vector<BatchRow> const & rows)
{
    auto const hasCode = [](ExitCode code) {
        return [code](BatchRow const & row) { return row.result.code == code; };
    };
    ExitCode const first = rows.front().result.code;
    if (std::all_of(rows.begin(), rows.end(), hasCode(first)))
        return first;
    return std::any_of(rows.begin(), rows.end(), hasCode(Success)) ? SomeFailed : RunFailed;
}

/// The last bytes of a name of a folder, at most; with a number behind it is a name, too.
constexpr std::size_t LongestName = 240;

std::string folderName(std::string const & file)
{
    std::string name = std::filesystem::path(file).filename();
    if (name.empty() || name == "." || name == "..")
        return "file";
    return name.size() > LongestName ? name.substr(name.size() - LongestName) : name;
}

} // namespace

std::vector<std::string> reportFolders(std::vector<std::string> const & files)
{
    std::vector<std::string> folders;
    std::set<std::string> taken;
    folders.reserve(files.size());
    for (std::string const & file : files) {
        std::string const name = folderName(file);
        std::string folder = name;
        for (int number = 2; !taken.insert(folder).second; ++number)
            folder = name + "-" + std::to_string(number);
        folders.push_back(folder);
    }
    return folders;
}

ExitCode importFiles(BatchArguments const & arguments)
{
    std::signal(SIGCHLD, SIG_DFL); // one that is ignored would hide how a worker ended
    inheritTranslators();
    auto const start = Clock::now();
    std::vector<BatchRow> rows;
    if (int const signal = Batch(arguments).run(rows)) {
        std::signal(signal, SIG_DFL);
        raise(signal);
    }
    std::size_t const columns =
        isatty(STDOUT_FILENO) ? terminalSize(STDOUT_FILENO).columns - 1 : AnyWidth;
    std::string const table =
        batchTable(rows, std::chrono::duration_cast<Milliseconds>(Clock::now() - start), columns);
    std::fwrite(table.data(), 1, table.size(), stdout);
    return codeOfAll(rows);
}

} // namespace keld
