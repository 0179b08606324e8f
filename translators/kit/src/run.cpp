#include "log.h"
#include "trail.h"

#include <keld-transl/model/pool.h>
#include <keld-transl/reporting/logger_policy.h>
#include <keld-translator-kit/run.h>

#include <algorithm>

namespace translator_kit {

namespace {

void addToLog(std::string const & words, cad::ILoggerPolicy::SubType subType)
{
    transl_tk::Pool::getInstance()->logger()->addEntry(words.c_str(), UserLog, subType, true);
}

} // namespace

Run::Run(transl_tk::RWFD & frames, Options const & options, Trail & trail,
         transl_tk::SubPool & model, transl_tk::DataBasePolicy * metadata)
    : m_Frames(frames), m_Options(options), m_Trail(trail), m_Model(model), m_Metadata(metadata)
{}

void Run::progress(int percent)
{
    using namespace std::chrono_literals;

    percent = std::clamp(percent, 0, 100);
    if (percent == m_Percent)
        return;
    auto const now = std::chrono::steady_clock::now();
    if (m_Percent >= 0 && percent < 100 && now - m_ProgressTime < 100ms)
        return;

    m_Percent = percent;
    m_ProgressTime = now;
    m_Frames.setKey(transl_tk::FrameProgress);
    m_Frames.appendInt(percent);
    m_Frames.write_fd();
}

void Run::status(int value)
{
    m_Frames.setKey(transl_tk::FrameStatus);
    m_Frames.appendInt(value);
    m_Frames.write_fd();
}

void Run::alive()
{
    m_Frames.setKey(transl_tk::FrameSkip);
    m_Frames.write_fd();
}

void Run::phase(std::string_view words)
{
    m_Trail.phase(words);
}

void Run::at(std::string_view entity)
{
    m_Trail.entity(entity);
}

std::string Run::place() const
{
    return m_Trail.words();
}

void Run::message(std::string const & words)
{
    addToLog(words, cad::ILoggerPolicy::Text);
}

void Run::warning(std::string const & words)
{
    addToLog(words, cad::ILoggerPolicy::WarningLine);
}

void Run::error(std::string const & words)
{
    addToLog(words, cad::ILoggerPolicy::ErrorLine);
}

} // namespace translator_kit
