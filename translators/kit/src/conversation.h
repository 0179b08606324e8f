#ifndef KELD_TRANSLATOR_KIT_CONVERSATION_H
#define KELD_TRANSLATOR_KIT_CONVERSATION_H

#include "trail.h"

#include <keld-common/channel.h>
#include <keld-transl/process/rwfd.h>
#include <keld-translator-kit/translator.h>

#include <functional>
#include <optional>
#include <string>

namespace translator_kit {

/// The conversation with the host, from its first command to "q".
class Conversation
{
public:
    Conversation(TranslatorEnds const & ends, Translator const & translator,
                 Options const & options, bool optionsFound);

    /// Returns when the host is done, is gone, or says what this translator does not know.
    void hold();

private:
    using Work = std::function<void(Run & run)>;

    void importFile(std::string const & path);
    void exportFile(std::string const & path);
    void sendModel(std::string const & path, std::string const & segment);
    void receiveModel(std::string const & path, std::string const & sizeAndSegment);

    void readFile(std::string const & path, Run & run);
    std::optional<Reason> guarded(Work const & work, Reason otherwise,
                                  transl_tk::DataBasePolicy * metadata = nullptr);
    std::string nextCommand();
    void sendKey(transl_tk::FrameKey key);

    TranslatorEnds m_Ends;
    transl_tk::RWFD m_Commands;
    transl_tk::RWFD m_Frames;
    Translator const & m_Translator;
    Options m_Options;
    Trail m_Trail;
    bool m_OptionsFound;
};

} // namespace translator_kit

#endif
