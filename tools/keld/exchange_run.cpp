#include "exchange_run.h"

#include "translator_end.h"

#include <keld-common/channel.h>
#include <keld-common/files.h>
#include <keld-transl/model/pool.h>
#include <keld-transl/process/server.h>
#include <keld-translator-kit/breadcrumbs.h>

#include <charconv>
#include <type_traits>

namespace keld {

using transl_tk::ClientIn;
using transl_tk::ClientOut;
using transl_tk::IOption;
using transl_tk::IValue;
using transl_tk::Pool;
using transl_tk::Server;

namespace {

/// A segment name that no other run has.
std::string newSegmentName()
{
    static int runs = 0;
    return "keld_" + std::to_string(getCurrentProcessId()) + "_" + std::to_string(++runs);
}

template <class Number> bool isNumber(std::string const & text, Number & number)
{
    char const * const end = text.data() + text.size();
    auto const result = std::from_chars(text.data(), end, number);
    return result.ec == std::errc() && result.ptr == end;
}

/// The value of an option: a whole number, a number, "true" or "false", or else a text.
IValue * makeValue(std::string const & text)
{
    int integer = 0;
    double number = 0;
    if (isNumber(text, integer))
        return IValue::create(integer);
    if (isNumber(text, number))
        return IValue::create(number);
    if (text == "true" || text == "false")
        return IValue::create(text == "true");
    return IValue::create(text.c_str());
}

IOption * makeOption(std::string const & name, IValue * value)
{
    return IOption::create(name.c_str(), value, "");
}

/// Where the translator's own 0 to 100 percent lie in the whole run.
template <class Driver> constexpr int TranslatorStart = std::is_same_v<Driver, ClientIn> ? 10 : 50;
constexpr int TranslatorEnd = 90;

} // namespace

template <class Driver>
ExchangeRun<Driver>::ExchangeRun(RunSettings const & settings)
    : m_Settings(settings), m_Segment(newSegmentName()), m_Watch(settings.limits)
{}

template <class Driver> void ExchangeRun<Driver>::exchange(std::function<void()> const & work)
{
    InterruptibleRun const interruptible(m_Segment);
    m_Watch.resume();
    work();
    m_Watch.pause();
}

template <class Driver> std::string ExchangeRun<Driver>::wordsForEnd()
{
    std::string const place = m_Breadcrumbs.place();
    switch (m_Watch.excess()) {
    case TranslatorWatch::Excess::Time:
        return wordsForTimeLimit(m_Settings.limits, place);
    case TranslatorWatch::Excess::Memory:
        return wordsForMemoryLimit(m_Settings.limits, m_Watch.peak(), place);
    default:
        return wordsForEnding(ServerGetEnding(KELD_CHANNEL_NUMBER), place);
    }
}

template <class Driver> void ExchangeRun<Driver>::setProgress(int const & percent)
{
    constexpr int Start = TranslatorStart<Driver>;
    int const ownPercent = std::min(std::max(percent, 0), 100);
    m_Settings.progress.show(m_TranslatorSpeaks ? Start + (TranslatorEnd - Start) * ownPercent / 100
                                                : percent);
}

template <class Driver> void ExchangeRun<Driver>::fillOptions()
{
    transl_tk::IExecIO & options = *this->getExecIO();
    for (auto const & [name, value] : m_Settings.options)
        options.addOption(makeOption(name, makeValue(value)));
    if (!m_Breadcrumbs.path().empty())
        options.addOption(makeOption(translator_kit::BreadcrumbsOption,
                                     IValue::create(m_Breadcrumbs.path().c_str())));
    if (m_Settings.reportDirectory.empty())
        return;
    char const * const directory = m_Settings.reportDirectory.c_str();
    options.addOption(makeOption("dump_directory", IValue::create(directory)));
    options.addOption(makeOption("full_reprot", IValue::create(directory)));
}

template <class Driver>
bool ExchangeRun<Driver>::onSuccess(char * buffer, int & position, bool const & hasPayload,
                                    int & messageId)
{
    m_Watch.pause();
    m_Answered = true;
    bool const result = Driver::onSuccess(buffer, position, hasPayload, messageId);
    noteExchange();
    return result;
}

template <class Driver>
bool ExchangeRun<Driver>::onFilePathNameOk(char * buffer, int & position, bool const & hasPayload,
                                           int & messageId)
{
    m_Watch.pause(); // an export puts the model into its segment now
    bool const result = Driver::onFilePathNameOk(buffer, position, hasPayload, messageId);
    m_Watch.resume();
    noteExchange();
    return result;
}

template <class Driver>
bool ExchangeRun<Driver>::onExit(char * buffer, int & position, bool const & hasPayload,
                                 int & messageId)
{
    m_Watch.pause();
    m_Answered = true;
    bool const result = Driver::onExit(buffer, position, hasPayload, messageId);
    noteExchange();
    return result;
}

template <class Driver>
bool ExchangeRun<Driver>::onProgress(char * buffer, int & position, bool const & hasPayload,
                                     int & messageId)
{
    m_TranslatorSpeaks = true;
    bool const result = Driver::onProgress(buffer, position, hasPayload, messageId);
    m_TranslatorSpeaks = false;
    return result;
}

template <class Driver> void ExchangeRun<Driver>::noteExchange()
{
    if (m_ExchangeFailure.empty())
        m_ExchangeFailure = Server::exchangeFailure();
}

template class ExchangeRun<ClientIn>;
template class ExchangeRun<ClientOut>;

ImportRun::ImportRun(RunSettings const & settings) : ExchangeRun(settings)
{
    // The driver uses a sub-pool of the file's name; made here, it is there after any run.
    Pool::construct(settings.fileName);
}

transl_tk::SubPool & ImportRun::model() const
{
    return *Pool::getInstance()->currentSubPool();
}

void ImportRun::run()
{
    exchange([this] { read(m_Settings.fileName, m_Settings.translator.serverType); });
}

ExportRun::ExportRun(RunSettings const & settings, std::function<void()> fillModel)
    : ExchangeRun(settings), m_FillModel(std::move(fillModel))
{}

void ExportRun::run()
{
    exchange([this] { write(m_Settings.fileName, m_Settings.translator.serverType); });
}

} // namespace keld
