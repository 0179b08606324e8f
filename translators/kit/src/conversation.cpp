#include "conversation.h"

#include "host_watch.h"
#include "log.h"
#include "metadata_only.h"

#include <keld-common/file_mapping.h>
#include <keld-transl/model/pool.h>
#include <keld-transl/process/exit_status.h>
#include <keld-transl/process/server.h>
#include <keld-transl/reporting/logger_policy.h>
#include <keld-translator-kit/joined_policy.h>

#include <charconv>
#include <new>

namespace translator_kit {

using transl_tk::Pool;
using transl_tk::Server;

namespace {

/// What stands behind `verb` in `command`; nothing when it is another command.
std::optional<std::string> argumentOf(std::string const & command, std::string_view verb)
{
    if (command.compare(0, verb.size(), verb) != 0)
        return std::nullopt;
    return command.substr(verb.size());
}

/// An empty model as the current sub-pool.
transl_tk::SubPool & newModel()
{
    Pool::construct("translator");
    return *Pool::getInstance()->currentSubPool();
}

/// Holds a segment, so that its name goes even when the host is killed: the last holder takes it
/// along.
class SegmentHold
{
public:
    explicit SegmentHold(std::string const & name)
        : m_Handle(OpenFileMappingA(KELD_FILE_MAP_ALL_ACCESS, 0, name.c_str()))
    {}
    SegmentHold(SegmentHold const &) = delete;
    SegmentHold & operator=(SegmentHold const &) = delete;
    ~SegmentHold()
    {
        if (m_Handle)
            CloseHandle(m_Handle);
    }

private:
    void * m_Handle;
};

struct NamedModel
{
    long long size;
    std::string segment;
};

/// Takes "<size>, <segment>" apart.
NamedModel parseModel(std::string const & sizeAndSegment)
{
    NamedModel model{};
    char const * const end = sizeAndSegment.data() + sizeAndSegment.size();
    auto const number = std::from_chars(sizeAndSegment.data(), end, model.size);
    std::string_view const rest(number.ptr, static_cast<std::size_t>(end - number.ptr));
    if (number.ec != std::errc() || rest.substr(0, 2) != ", " || rest.size() == 2)
        throw Failure(Reason::Failed, "The host names no model.");
    model.segment = rest.substr(2);
    return model;
}

/// Where the run is, to stand behind words of its failure.
std::string where(Run const & run)
{
    std::string const place = run.place();
    return place.empty() ? "" : " (" + place + ")";
}

/// Brings a model into the current sub-pool.
void readModel(NamedModel const & model)
{
    Server::readSharedMem(model.segment, model.size);
    if (!Server::exchangeFailure().empty())
        throw Failure(Reason::Failed, Server::exchangeFailure());
    // The log that came along is the host's; from here on it is this run's.
    Pool::getInstance()->logger()->clear();
}

} // namespace

Conversation::Conversation(TranslatorEnds const & ends, Translator const & translator,
                           Options const & options, bool optionsFound)
    : m_Ends(ends), m_Commands(ends.commands), m_Frames(ends.frames), m_Translator(translator),
      m_Options(options), m_Trail(options.text(BreadcrumbsOption).value_or("")),
      m_OptionsFound(optionsFound)
{}

void Conversation::hold()
{
    for (;;) {
        std::string const command = nextCommand();
        if (auto const source = argumentOf(command, "f ")) {
            importFile(*source);
        } else if (auto const target = argumentOf(command, "s ")) {
            exportFile(*target);
        } else {
            if (command == "q")
                sendKey(transl_tk::FrameEnd);
            return;
        }
    }
}

void Conversation::importFile(std::string const & path)
{
    sendKey(transl_tk::FrameFileNameAccepted);
    if (auto const segment = argumentOf(nextCommand(), "i ")) {
        sendModel(path, *segment);
        nextCommand(); // "x u": the host has read the model
        Server::unmapSharedMemory(true);
    }
    sendKey(transl_tk::FrameEnd);
}

void Conversation::exportFile(std::string const & path)
{
    sendKey(transl_tk::FrameFileNameAccepted);
    if (auto const model = argumentOf(nextCommand(), "e ")) {
        receiveModel(path, *model);
        nextCommand(); // "x "
    }
    sendKey(transl_tk::FrameEnd);
}

void Conversation::sendModel(std::string const & path, std::string const & segment)
{
    CollectingPolicy metadata;
    bool const isMetadataOnly = m_Options.flag(MetadataOnlyOption).value_or(false);
    std::optional<Reason> failure = guarded([&](Run & run) { readFile(path, run); }, Reason::Failed,
                                            isMetadataOnly ? &metadata : nullptr);

    long long size = 0;
    if (failure == Reason::MissingExportInfo || failure == Reason::Cancelled) {
        printLog(m_Translator.name);
    } else {
        m_Trail.phase("handing over the model");
        HostWatch const watch(m_Ends);
        size = Server::writeSharedMem(segment);
        if (!Server::exchangeFailure().empty()) {
            printLog(m_Translator.name);
            printLine(m_Translator.name, Server::exchangeFailure());
            failure = Reason::Failed;
            size = 0;
        }
    }

    if (failure) {
        m_Frames.setKey(transl_tk::FrameExit);
        m_Frames.appendInt(static_cast<int>(*failure));
    } else {
        m_Frames.setKey(transl_tk::FrameSuccess);
    }
    if (failure != Reason::MissingExportInfo)
        m_Frames.appendInt64(size);
    m_Frames.write_fd();
    Pool::destruct(); // while the host reads
}

/// Reads the file into the current model, and leaves the model's metadata alone of it when the host
/// asks for no more; also of what there was when the reading failed.
void Conversation::readFile(std::string const & path, Run & run)
{
    if (!m_Translator.readFile)
        throw Failure(Reason::UnsupportedFileType, "This translator reads no files.");
    try {
        m_Translator.readFile(path, run);
    } catch (...) {
        if (run.metadata() != nullptr)
            keepMetadataOnly(*run.metadata());
        throw;
    }
    if (run.metadata() != nullptr)
        keepMetadataOnly(*run.metadata());
}

void Conversation::receiveModel(std::string const & path, std::string const & sizeAndSegment)
{
    std::optional<Reason> const failure = guarded(
        [&](Run & run) {
            NamedModel const model = parseModel(sizeAndSegment);
            SegmentHold const hold(model.segment);
            m_Trail.phase("taking over the model");
            readModel(model);
            m_Trail.phase("");
            if (!m_Translator.writeFile)
                throw Failure(Reason::UnsupportedFileType, "This translator writes no files.");
            m_Translator.writeFile(path, run);
        },
        Reason::ExportFailed);
    printLog(m_Translator.name);

    m_Frames.setKey(failure ? transl_tk::FrameExit : transl_tk::FrameSuccess);
    m_Frames.appendInt(failure ? static_cast<int>(*failure)
                               : static_cast<int>(transl_tk::ExitCompleted));
    m_Frames.write_fd();
    Pool::destruct();
}

/// Does `work` on an empty model under the eyes of the watch. Returns why it failed, with the words
/// in the log, or nothing; any failure that gives no reason counts as `otherwise`.
std::optional<Reason> Conversation::guarded(Work const & work, Reason otherwise,
                                            transl_tk::DataBasePolicy * metadata)
{
    Run run(m_Frames, m_Options, m_Trail, newModel(), metadata);
    m_Trail.phase("");
    std::optional<Reason> reason = otherwise;
    try {
        HostWatch const watch(m_Ends);
        work(run);
        reason.reset();
    } catch (Failure const & failure) {
        run.error(failure.what());
        reason = failure.reason();
    } catch (std::bad_alloc const &) {
        run.error("There is not enough memory for this model" + where(run) + ".");
    } catch (std::exception const & exception) {
        run.error(exception.what() + where(run));
    } catch (...) {
        run.error("The translator failed without saying why" + where(run) + ".");
    }
    if (!m_OptionsFound)
        run.warning("The options of this run were not found; the defaults were taken.");
    return reason;
}

/// The host's next command line; empty when there are no more.
std::string Conversation::nextCommand()
{
    std::string block;
    m_Commands.read_fd(block);
    return transl_tk::RWFD::readLine(block.c_str());
}

void Conversation::sendKey(transl_tk::FrameKey key)
{
    m_Frames.setKey(key);
    m_Frames.write_fd();
}

} // namespace translator_kit
