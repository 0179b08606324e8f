#include "point_line.h"
#include "xyz_file.h"

#include <keld-transl/model/point3d.h>
#include <keld-translator-kit/input_file.h>
#include <keld-translator-kit/limited_warnings.h>
#include <keld-translator-kit/translator.h>

#include <cstring>
#include <string_view>
#include <vector>

namespace xyz {

namespace {

using translator_kit::Failure;
using translator_kit::InputFile;
using translator_kit::LimitedWarnings;
using translator_kit::Reason;
using translator_kit::Run;

/// Also the longest line that is looked at; a point takes some 80 characters at most.
constexpr std::size_t BufferSize = 1 << 20;

/// Makes points of lines.
class PointReader
{
public:
    PointReader(std::string const & path, Run & run) : m_Path(path), m_Faults(run) {}

    void take(std::string_view line)
    {
        ++m_Lines;
        double position[3];
        switch (readLine(line, position, m_Fault)) {
        case LineKind::Point:
            if (!transl_tk::Point3D::create(0, position[0], position[1], position[2]))
                throw Failure(Reason::Failed, m_Path + " holds more points than a model can.");
            ++m_Points;
            break;
        case LineKind::Fault:
            skip(m_Fault);
            break;
        case LineKind::Nothing:
            break;
        }
    }

    void takeTooLong()
    {
        ++m_Lines;
        skip("the line is too long");
    }

    void end()
    {
        m_Faults.end("lines of " + m_Path + " hold no point");
        if (m_Points > 0)
            return;
        if (m_Lines == 0)
            throw Failure(Reason::EmptyModel, m_Path + " is empty.");
        throw Failure(Reason::EmptyModel, m_Path + " holds no point.");
    }

private:
    void skip(std::string const & fault)
    {
        m_Faults.add(m_Path + ", line " + std::to_string(m_Lines) + " holds no point: " + fault +
                     ".");
    }

    std::string m_Path;
    LimitedWarnings m_Faults;
    std::string m_Fault;
    long long m_Lines = 0;
    long long m_Points = 0;
};

} // namespace

void readPoints(std::string const & path, Run & run)
{
    InputFile file(path);
    PointReader reader(path, run);
    std::vector<char> buffer(BufferSize);
    std::size_t kept = 0; // bytes of an unfinished line at the buffer's start
    bool passing = false; // inside a line that is too long
    long long done = 0;

    while (std::size_t const count = file.read(buffer.data() + kept, buffer.size() - kept)) {
        done += static_cast<long long>(count);
        std::string_view text(buffer.data(), kept + count);
        for (std::size_t end; (end = text.find('\n')) != text.npos; text.remove_prefix(end + 1)) {
            if (passing)
                reader.takeTooLong();
            else
                reader.take(text.substr(0, end));
            passing = false;
        }
        if (text.size() == buffer.size())
            passing = true;
        if (passing)
            text.remove_prefix(text.size());
        std::memmove(buffer.data(), text.data(), text.size());
        kept = text.size();
        if (file.size() > 0)
            run.progress(static_cast<int>(100 * std::min(done, file.size()) / file.size()));
    }
    if (passing)
        reader.takeTooLong();
    else if (kept > 0)
        reader.take({buffer.data(), kept});
    reader.end();
}

} // namespace xyz
