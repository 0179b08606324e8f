#ifndef KELD_TOOLS_EXCHANGE_RUN_H
#define KELD_TOOLS_EXCHANGE_RUN_H

#include "breadcrumb_trail.h"
#include "interrupt.h"
#include "progress_display.h"
#include "translator_watch.h"
#include "translators.h"

#include <keld-transl/model/sub_pool.h>
#include <keld-transl/process/client_in.h>
#include <keld-transl/process/client_out.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace keld {

/// Name and value of an option as the user wrote them.
using OptionText = std::pair<std::string, std::string>;

/// What a run is made with.
struct RunSettings
{
    std::string fileName;
    TranslatorChoice const & translator;
    std::vector<OptionText> const & options;
    Limits limits;
    std::string reportDirectory; ///< where the translator puts its report and dumps; empty for none
    ProgressDisplay & progress;
};

/// What import and export have in common. `Driver` is `ClientIn` or `ClientOut`.
template <class Driver> class ExchangeRun : public Driver
{
public:
    explicit ExchangeRun(RunSettings const & settings);

    /// Whether the translator has said how the run ended. The exit status alone does not tell: it
    /// reads as completed when the translator dies.
    bool answered() const { return m_Answered; }

    /// Why the model could not be handed over, in a sentence; empty when it could.
    std::string const & exchangeFailure() const { return m_ExchangeFailure; }

    /// Says of a run without an answer how the translator ended and where it was then, a sentence.
    std::string wordsForEnd();

    /// Whether the translator was ended because it went beyond a limit.
    bool exceededLimit() { return m_Watch.excess() != TranslatorWatch::Excess::None; }

    std::string getSharedMemName() override { return m_Segment; }
    void setProgress(int const & percent) override;
    void setStatus(int const &) override {}
    std::string getExecCmd() override { return m_Settings.translator.paths->calcExecCmd(); }
    std::string getLibPath() override { return m_Settings.translator.paths->calcLibPath(); }
    void fillOptions() override;

    bool onSuccess(char * buffer, int & position, bool const & hasPayload,
                   int & messageId) override;
    bool onFilePathNameOk(char * buffer, int & position, bool const & hasPayload,
                          int & messageId) override;
    bool onExit(char * buffer, int & position, bool const & hasPayload, int & messageId) override;
    bool onProgress(char * buffer, int & position, bool const & hasPayload,
                    int & messageId) override;

protected:
    RunSettings m_Settings;

    /// Does `work`, a whole run, within the limits, and such that an interrupt leaves nothing of
    /// it.
    void exchange(std::function<void()> const & work);

private:
    void noteExchange();

    std::string m_Segment;
    BreadcrumbTrail m_Breadcrumbs;
    TranslatorWatch m_Watch;
    bool m_Answered = false;
    bool m_TranslatorSpeaks = false; ///< the progress comes from the translator
    std::string m_ExchangeFailure;
};

/// Brings a file into a model.
class ImportRun : public ExchangeRun<transl_tk::ClientIn>
{
public:
    /// Makes the sub-pool that the model arrives in.
    explicit ImportRun(RunSettings const & settings);

    void run();

    /// The model that arrived, together with the log of the run.
    transl_tk::SubPool & model() const;

    void transferModel() override {}
    void importStarted() override {}
    bool confirmImport() override { return true; }
};

/// Brings a model into a file.
class ExportRun : public ExchangeRun<transl_tk::ClientOut>
{
public:
    /// `fillModel` fills the current sub-pool, or makes another one current whose model goes out
    /// and is freed then.
    ExportRun(RunSettings const & settings, std::function<void()> fillModel);

    void run();

    void transferModel() override { m_FillModel(); }

private:
    std::function<void()> m_FillModel;
};

} // namespace keld

#endif
