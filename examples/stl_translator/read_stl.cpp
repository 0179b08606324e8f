#include "read_stl.h"

#include "stl_file.h"

#include <keld-transl/topology/body.h>
#include <keld-transl/topology/tri_strip.h>
#include <keld-translator-kit/translator.h>

#include <algorithm>
#include <cstring>
#include <filesystem>
#include <string_view>

namespace stl {

namespace {

using translator_kit::Failure;
using translator_kit::InputFile;
using translator_kit::Reason;
using translator_kit::Run;

/// As much of a file as it takes to tell text: the count of a binary file lies within, and the
/// count of any that is not enormous has a zero byte.
constexpr std::size_t HeadSize = 512;
constexpr std::string_view ByteOrderMark = "\xef\xbb\xbf";
constexpr std::string_view Blanks = " \t\r\n\v\f";
constexpr char EndOfText = '\x1a'; // some programs still write it

bool isText(std::string_view head)
{
    return std::none_of(head.begin(), head.end(), [](char c) {
        return c >= '\0' && c < ' ' && Blanks.find(c) == Blanks.npos && c != EndOfText;
    });
}

bool beginsWithSolid(std::string_view head)
{
    constexpr std::string_view Solid = "solid";
    head.remove_prefix(std::min(head.find_first_not_of(Blanks), head.size()));
    return head.size() >= Solid.size() &&
           std::equal(Solid.begin(), Solid.end(), head.begin(),
                      [](char a, char b) { return a == b || a - 'a' + 'A' == b; });
}

std::uint32_t countIn(std::string_view head)
{
    std::uint32_t count = 0;
    if (head.size() >= PreambleSize)
        std::memcpy(&count, head.data() + HeaderSize, sizeof(count));
    return count;
}

std::vector<Solid> readSolids(std::string const & path, InputFile & file, Run & run)
{
    char bytes[HeadSize];
    std::string_view const head(bytes, file.read(bytes, HeadSize));
    if (head.empty())
        throw Failure(Reason::EmptyModel, path + " is empty.");

    auto const size = static_cast<std::size_t>(file.size());
    std::uint32_t const count = countIn(head);
    bool const sizeFits = size == PreambleSize + std::size_t{count} * TriangleSize;
    if (!sizeFits && isText(head)) {
        std::size_t const start = head.starts_with(ByteOrderMark) ? ByteOrderMark.size() : 0;
        if (!beginsWithSolid(head.substr(start)))
            throw Failure(Reason::UnsupportedFileType,
                          path + " is no STL file: it is text that does not begin with \"solid\".");
        return readAscii(path, file, static_cast<long long>(start), run);
    }
    if (size < PreambleSize)
        throw Failure(Reason::Failed, path + " is cut short: a binary STL file begins with " +
                                          std::to_string(PreambleSize) + " bytes, and it has " +
                                          std::to_string(size) + ".");
    std::vector<Solid> solids;
    solids.push_back(readBinary(path, file, count, run));
    return solids;
}

void addBody(std::string const & name, Mesh const & mesh)
{
    static_assert(sizeof(Corner) == 3 * sizeof(float));
    auto * const strip = transl_tk::TriStrip::create(
        0, reinterpret_cast<float const *>(mesh.vertices.data()), nullptr,
        static_cast<int>(mesh.vertices.size()), nullptr, 0, mesh.indices.data(),
        static_cast<int>(mesh.indices.size()), false);
    transl_tk::Body::create(0, name.c_str())->addTriStrip(strip);
}

} // namespace

void readStl(std::string const & path, Run & run)
{
    InputFile file(path);
    std::vector<Solid> solids = readSolids(path, file, run);
    std::string const fileName = std::filesystem::path(path).stem();
    bool empty = true;
    for (Solid & solid : solids) {
        if (!solid.mesh.indices.empty()) {
            addBody(solid.name.empty() ? fileName : solid.name, solid.mesh);
            empty = false;
        }
        solid.mesh = {};
    }
    if (empty)
        throw Failure(Reason::EmptyModel, path + " holds no triangle.");
    run.progress(100);
}

} // namespace stl
