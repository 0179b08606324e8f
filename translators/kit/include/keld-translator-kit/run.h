#ifndef KELD_TRANSLATOR_KIT_RUN_H
#define KELD_TRANSLATOR_KIT_RUN_H

#include <keld-transl/metadata/database_policy.h>
#include <keld-transl/model/sub_pool.h>
#include <keld-transl/process/rwfd.h>

#include <chrono>
#include <string>
#include <string_view>

namespace translator_kit {

class Options;
class Trail;

/// One run, as the functions of a translator see it. Belongs to the thread that runs them.
class Run
{
public:
    /// `metadata` is null unless the host asks for nothing else.
    Run(transl_tk::RWFD & frames, Options const & options, Trail & trail,
        transl_tk::SubPool & model, transl_tk::DataBasePolicy * metadata = nullptr);
    Run(Run const &) = delete;
    Run & operator=(Run const &) = delete;

    /// Tells the host how much of the work is done, 0 to 100. May be called at any rate: the first
    /// call and a change to 100 go out at once, others at most ten times a second.
    void progress(int percent);

    /// Tells the host a number that only host and translator know the meaning of.
    void status(int value);

    /// Tells the host that the translator is at work, where nothing else is to be told.
    void alive();

    /// Say what the translator does, such as "parse", and which entity of the file it does that to,
    /// such as "#12". The host tells its user when the translator does not come back. A new phase
    /// is at no entity. Both cost no more than a copy of the text, so that each face of a large
    /// file may be told. A phase is cut to 511 bytes, an entity to 3583.
    void phase(std::string_view words);
    void at(std::string_view entity);

    /// The last phase and entity in words, `in the phase "parse", at #12`; empty when none was
    /// told.
    std::string place() const;

    /// Append words for the user to the log. Empty words add nothing.
    void message(std::string const & words);
    void warning(std::string const & words);
    void error(std::string const & words);

    /// The model of the run, which is the current sub-pool.
    transl_tk::SubPool & model() const { return m_Model; }

    Options const & options() const { return m_Options; }

    /// On an import whose host asks for metadata alone, where names of features
    /// (`addFeatureType`, `FeatureCounts`) and texts (`TextList`) go that the model does not hold.
    /// The kit counts the model itself, once it is read. Null on any other run.
    transl_tk::DataBasePolicy * metadata() const { return m_Metadata; }

private:
    transl_tk::RWFD & m_Frames;
    Options const & m_Options;
    Trail & m_Trail;
    transl_tk::SubPool & m_Model;
    transl_tk::DataBasePolicy * m_Metadata;
    int m_Percent = -1;
    std::chrono::steady_clock::time_point m_ProgressTime;
};

} // namespace translator_kit

#endif
