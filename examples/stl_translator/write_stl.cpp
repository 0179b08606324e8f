#include "read_stl.h"
#include "stl_file.h"
#include "triangles.h"

#include <keld-transl/topology/body.h>
#include <keld-translator-kit/limited_warnings.h>
#include <keld-translator-kit/translator.h>

#include <charconv>
#include <cstring>
#include <set>
#include <string_view>

namespace stl {

namespace {

using transl_tk::Body;
using transl_tk::TriStrip;
using translator_kit::Failure;
using translator_kit::LimitedWarnings;
using translator_kit::OutputFile;
using translator_kit::Reason;
using translator_kit::Run;

constexpr std::size_t BufferSize = 1 << 20;
/// Longer than any triangle in either form; the longest form of a float is "-1.17549435e-38".
constexpr std::size_t LongestTriangle = 1024;
constexpr char Header[HeaderSize + 1] = "Binary STL, written by keld_stl";

/// Meshes that make a solid of an ASCII file together.
struct Group
{
    std::string name;
    std::vector<TriStrip *> meshes;
};

std::vector<Group> groupsOf(transl_tk::SubPool const & model)
{
    std::vector<Group> groups;
    std::set<TriStrip *> owned;
    model.m_Bodies.m_Entities.forEach([&](int, transl_tk::Base * entity) {
        auto * const body = static_cast<Body *>(entity);
        Group & group = groups.emplace_back(Group{body->getName(), {}});
        body->forEachTriStrip(
            [](TriStrip * mesh, void * meshes) {
                if (mesh != nullptr)
                    static_cast<std::vector<TriStrip *> *>(meshes)->push_back(mesh);
                return true;
            },
            &group.meshes);
        owned.insert(group.meshes.begin(), group.meshes.end());
    });
    Group & free = groups.emplace_back();
    model.m_TriStrips.m_Entities.forEach([&](int, transl_tk::Base * entity) {
        auto * const mesh = static_cast<TriStrip *>(entity);
        if (!owned.contains(mesh))
            free.meshes.push_back(mesh);
    });
    return groups;
}

/// How many triangles of `groups` can be written; names the others in the log.
std::uint32_t countTriangles(std::vector<Group> const & groups, Run & run)
{
    std::uint32_t count = 0;
    LimitedWarnings faults(run);
    for (Group const & group : groups) {
        for (TriStrip * const mesh : group.meshes) {
            forEachTriangle(
                *mesh, [&](auto const &) { ++count; },
                [&](int number, Fault fault) {
                    faults.add("Triangle " + std::to_string(number) + " of mesh " +
                               std::to_string(mesh->getId()) + " is left out: " +
                               (fault == Fault::NotFinite ? "a corner is not finite."
                                                          : "an index is out of range."));
                });
        }
    }
    faults.end("triangles are left out");
    return count;
}

/// The unit normal of a triangle, or zeros where it has none.
void computeNormal(float const * const (&corners)[3], float (&normal)[3])
{
    double u[3];
    double v[3];
    for (int i = 0; i < 3; ++i) {
        u[i] = double{corners[1][i]} - corners[0][i];
        v[i] = double{corners[2][i]} - corners[0][i];
    }
    double const cross[3] = {u[1] * v[2] - u[2] * v[1], u[2] * v[0] - u[0] * v[2],
                             u[0] * v[1] - u[1] * v[0]};
    double const length =
        std::sqrt(cross[0] * cross[0] + cross[1] * cross[1] + cross[2] * cross[2]);
    for (int i = 0; i < 3; ++i)
        normal[i] = length > 0 ? static_cast<float>(cross[i] / length + 0.0) : 0.0F;
}

/// Bytes on their way into the file.
class Output
{
public:
    explicit Output(std::string const & path) : m_File(path), m_Buffer(BufferSize) {}

    void add(std::string_view bytes)
    {
        if (bytes.size() > m_Buffer.size() - m_Used)
            flush();
        if (bytes.size() > m_Buffer.size()) {
            m_File.write(bytes.data(), bytes.size());
            return;
        }
        bytes.copy(m_Buffer.data() + m_Used, bytes.size());
        m_Used += bytes.size();
    }

    void commit()
    {
        flush();
        m_File.commit();
    }

private:
    void flush()
    {
        m_File.write(m_Buffer.data(), m_Used);
        m_Used = 0;
    }

    OutputFile m_File;
    std::vector<char> m_Buffer;
    std::size_t m_Used = 0;
};

void addBinary(Output & output, float const (&normal)[3], float const * const (&corners)[3])
{
    char triangle[TriangleSize] = {};
    std::memcpy(triangle, normal, sizeof(normal));
    for (std::size_t i = 0; i < 3; ++i)
        std::memcpy(triangle + (i + 1) * sizeof(normal), corners[i], sizeof(normal));
    output.add({triangle, sizeof(triangle)});
}

void addAscii(Output & output, float const (&normal)[3], float const * const (&corners)[3])
{
    char triangle[LongestTriangle];
    char * end = triangle;
    auto const addText = [&](std::string_view text) { end += text.copy(end, text.size()); };
    auto const addPosition = [&](float const * position) {
        for (int i = 0; i < 3; ++i) {
            *end++ = ' ';
            end = std::to_chars(end, triangle + LongestTriangle, position[i]).ptr;
        }
    };
    addText("  facet normal");
    addPosition(normal);
    addText("\n    outer loop\n");
    for (float const * const corner : corners) {
        addText("      vertex");
        addPosition(corner);
        addText("\n");
    }
    addText("    endloop\n  endfacet\n");
    output.add({triangle, static_cast<std::size_t>(end - triangle)});
}

/// A name that stays on its line.
std::string onOneLine(std::string name)
{
    std::replace_if(
        name.begin(), name.end(), [](char c) { return c >= '\0' && c < ' '; }, '?');
    return name.empty() ? name : ' ' + name;
}

} // namespace

void writeStl(std::string const & path, Run & run)
{
    std::vector<Group> const groups = groupsOf(run.model());
    std::uint32_t const count = countTriangles(groups, run);
    if (count == 0)
        throw Failure(Reason::EmptyModel,
                      "The model holds no triangles to write; " + path + " is not written.");

    bool const ascii = run.options().flag("ascii").value_or(false);
    Output output(path);
    if (!ascii) {
        output.add({Header, HeaderSize});
        output.add({reinterpret_cast<char const *>(&count), sizeof(count)});
    }
    std::uint32_t done = 0;
    auto const write = [&](float const * const(&corners)[3]) {
        float normal[3];
        computeNormal(corners, normal);
        if (ascii)
            addAscii(output, normal, corners);
        else
            addBinary(output, normal, corners);
        if (++done % 65536 == 0)
            run.progress(static_cast<int>(100ULL * done / count));
    };
    for (Group const & group : groups) {
        if (group.meshes.empty())
            continue;
        if (ascii)
            output.add("solid" + onOneLine(group.name) + "\n");
        for (TriStrip * const mesh : group.meshes)
            forEachTriangle(*mesh, write, [](int, Fault) {});
        if (ascii)
            output.add("endsolid" + onOneLine(group.name) + "\n");
    }
    output.commit();
    run.progress(100);
}

} // namespace stl
