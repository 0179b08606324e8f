#include "read_stl.h"
#include "words.h"

#include <keld-translator-kit/limited_warnings.h>
#include <keld-translator-kit/translator.h>

#include <algorithm>
#include <bit>
#include <charconv>
#include <cmath>
#include <limits>

namespace stl {

namespace {

using translator_kit::Failure;
using translator_kit::InputFile;
using translator_kit::LimitedWarnings;
using translator_kit::quoted;
using translator_kit::Reason;
using translator_kit::Run;

/// Numbers between a facet's "normal" and its "outer".
constexpr int NormalWords = 3;
constexpr long long ProgressStep = 1 << 20;

/// Reads a number of which nothing is left over; false when `text` is none, infinity and NaN
/// included. One too small for a float is 0.
bool readNumber(std::string_view text, float & number)
{
    if (text.size() > 1 && text[0] == '+' && text[1] != '-')
        text.remove_prefix(1);
    char const * const end = text.data() + text.size();
    auto const [rest, error] = std::from_chars(text.data(), end, number);
    if (error == std::errc::result_out_of_range && rest == end) {
        double wide = 0;
        bool const fits = std::from_chars(text.data(), end, wide).ec == std::errc();
        number = static_cast<float>(wide);
        return fits && std::isfinite(number);
    }
    return error == std::errc() && rest == end && std::isfinite(number);
}

class AsciiReader
{
public:
    AsciiReader(std::string const & path, InputFile & file, Run & run)
        : m_Path(path), m_Size(file.size()), m_Run(run), m_Words(file), m_EmptySolids(run)
    {}

    std::vector<Solid> read()
    {
        bool passed = false;
        while (m_Words.next()) {
            if (m_Words.is("solid")) {
                readSolid();
            } else if (!passed) {
                m_Run.warning(here() + ": what stands behind the last solid is passed over.");
                passed = true;
            }
        }
        m_EmptySolids.end("solids of " + m_Path + " hold no triangle");
        return std::move(m_Solids);
    }

private:
    std::string here() const { return m_Path + ", line " + std::to_string(m_Words.line()); }

    void readSolid()
    {
        std::string const place = here();
        Solid solid = {m_Words.restOfLine(), {}};
        MeshBuilder builder(0);
        while (true) {
            need("\"facet\" or \"endsolid\"");
            if (m_Words.is("endsolid"))
                break;
            if (!m_Words.is("facet"))
                miss("\"facet\" or \"endsolid\"");
            readFacet(builder);
        }
        m_Words.restOfLine();

        solid.mesh = builder.take();
        if (solid.mesh.indices.empty())
            m_EmptySolids.add(place + ": the solid " + quoted(solid.name) + " holds no triangle.");
        else
            m_Solids.push_back(std::move(solid));
    }

    void readFacet(MeshBuilder & builder)
    {
        expect("normal");
        need("\"outer\"");
        for (int i = 0; i < NormalWords && !m_Words.is("outer"); ++i)
            need("\"outer\"");
        if (!m_Words.is("outer"))
            miss("\"outer\"");
        expect("loop");
        Corner corners[3];
        for (Corner & corner : corners) {
            expect("vertex");
            corner = {coordinate(), coordinate(), coordinate()};
        }
        expect("endloop");
        expect("endfacet");
        if (builder.cornerCount() > std::numeric_limits<int>::max() - 3)
            throw Failure(Reason::Failed, m_Path + " holds more triangles than a mesh can.");
        builder.add(corners, 3);
        showProgress();
    }

    std::uint32_t coordinate()
    {
        need("a number");
        float number = 0;
        if (!readNumber(m_Words.word(), number))
            throw Failure(Reason::Failed,
                          here() + ": " + quoted(m_Words.word()) + " is not a finite number.");
        return std::bit_cast<std::uint32_t>(number == 0 ? 0.0F : number);
    }

    void expect(char const * keyword)
    {
        std::string_view const text = keyword;
        if (!m_Words.next() || !m_Words.is(text))
            miss('"' + std::string(text) + '"');
    }

    void need(char const * what)
    {
        if (!m_Words.next())
            miss(what);
    }

    [[noreturn]] void miss(std::string const & what) const
    {
        if (m_Words.word().empty())
            throw Failure(Reason::Failed, m_Path + " is cut short: it ends in line " +
                                              std::to_string(m_Words.line()) + ", where " + what +
                                              " is missing.");
        throw Failure(Reason::Failed, here() + ": " + quoted(m_Words.word()) +
                                          " stands in the place of " + what + ".");
    }

    void showProgress()
    {
        if (m_Words.bytes() < m_NextProgress)
            return;
        m_NextProgress = m_Words.bytes() + ProgressStep;
        m_Run.progress(static_cast<int>(100 * std::min(m_Words.bytes(), m_Size) / m_Size));
    }

    std::string m_Path;
    long long m_Size;
    Run & m_Run;
    Words m_Words;
    LimitedWarnings m_EmptySolids;
    std::vector<Solid> m_Solids;
    long long m_NextProgress = 0;
};

} // namespace

std::vector<Solid> readAscii(std::string const & path, InputFile & file, long long start, Run & run)
{
    file.seek(start);
    return AsciiReader(path, file, run).read();
}

} // namespace stl
