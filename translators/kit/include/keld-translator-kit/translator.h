#ifndef KELD_TRANSLATOR_KIT_TRANSLATOR_H
#define KELD_TRANSLATOR_KIT_TRANSLATOR_H

#include <keld-transl/process/exit_status.h>
#include <keld-translator-kit/options.h>
#include <keld-translator-kit/output_file.h>
#include <keld-translator-kit/run.h>

#include <functional>
#include <stdexcept>
#include <string>

/// The translator's half of a run. A translator is an executable of a few lines:
///
///     void readFile(std::string const & path, translator_kit::Run & run);
///     void writeFile(std::string const & path, translator_kit::Run & run);
///
///     int main()
///     {
///         return translator_kit::run({"keld_xyz", readFile, writeFile});
///     }
///
/// The kit talks to the host, reads the options, sets up crash dumps and the report file, and moves
/// the model. The two functions move it between the current sub-pool and a file.
///
/// The log of a run is list 1 of `Pool::logger()`. On import it travels to the host inside the
/// model, also when the import fails. The conversation has no way for text from a translator that
/// exports, so there, and where an import hands over no model (the reasons `MissingExportInfo` and
/// `Cancelled`, or a segment that could not be written), the kit prints the log on standard error,
/// which a translator has in common with its host, each line behind the translator's name.
namespace translator_kit {

/// Why a run failed: the exit status that the host gets.
enum class Reason : int {
    Failed = transl_tk::ExitFailed,
    ExportFailed = transl_tk::ExitExportFailed,
    UnsupportedFileType = transl_tk::ExitUnsupportedFileType,
    EmptyModel = transl_tk::ExitEmptyModel,
    /// On import no model and no log goes to the host.
    MissingExportInfo = transl_tk::ExitMissingExportInfo,
    /// On import no model and no log goes to the host.
    Cancelled = transl_tk::ExitCancelled
};

/// What the functions of a translator throw to end their run: a reason, and words for the user,
/// which go into the log as an error.
class Failure : public std::runtime_error
{
public:
    Failure(Reason reason, std::string const & words) : std::runtime_error(words), m_Reason(reason)
    {}

    Reason reason() const noexcept { return m_Reason; }

private:
    Reason m_Reason;
};

/// A translator for one format.
struct Translator
{
    /// Name of the executable, in front of what the kit prints.
    std::string name;

    /// Reads the file `path` into the current sub-pool, which is empty. What it had made when it
    /// fails goes to the host all the same. Any other exception than `Failure` fails the run too,
    /// for `Reason::Failed`, its `what()` being the words.
    std::function<void(std::string const & path, Run & run)> readFile;

    /// Writes the current sub-pool to the file `path`, by way of `OutputFile`, so that a failure
    /// leaves what stood there before. Any other exception than `Failure` fails the run for
    /// `Reason::ExportFailed`. A translator that leaves it empty writes no files.
    std::function<void(std::string const & path, Run & run)> writeFile;
};

/// Serves the host that started this process until the host is done, and ends the process with exit
/// code 0. Returns 2, with a sentence on standard error, when no host started it.
///
/// The translator ends when its host does, also while one of its functions works. From here on
/// SIGPIPE is ignored in the process, and what it prints on standard output goes to standard error:
/// standard output is the host's, which may print something there that a program is to read.
int run(Translator const & translator);

} // namespace translator_kit

#endif
