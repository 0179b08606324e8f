#include "file_content.h"

#include <keld-translator-kit/input_file.h>
#include <keld-translator-kit/translator.h>

#include <algorithm>
#include <bit>
#include <cctype>
#include <cstdint>
#include <cstring>
#include <filesystem>
#include <string_view>
#include <utility>

namespace keld {

namespace {

/// A STEP file may begin with comments, an ASCII STL file with a long name.
constexpr std::size_t HeadSize = 4096;
constexpr std::string_view Blanks = " \t\r\n\v\f";

void skip(std::string_view & text, std::size_t count)
{
    text.remove_prefix(std::min(count, text.size()));
}

std::string_view withoutMark(std::string_view text)
{
    constexpr std::string_view ByteOrderMark = "\xef\xbb\xbf";
    if (text.starts_with(ByteOrderMark))
        skip(text, ByteOrderMark.size());
    return text;
}

std::string_view withoutBlanks(std::string_view text)
{
    skip(text, text.find_first_not_of(Blanks));
    return text;
}

/// Whether `text` begins with the lower-case `word`, in any case.
bool beginsWith(std::string_view text, std::string_view word)
{
    return text.size() >= word.size() &&
           std::equal(word.begin(), word.end(), text.begin(), [](char expected, unsigned char c) {
               return expected == static_cast<char>(std::tolower(c));
           });
}

bool isStep(std::string_view head)
{
    constexpr std::string_view CommentEnd = "*/";
    head = withoutBlanks(withoutMark(head));
    while (head.starts_with("/*")) {
        std::size_t const end = head.find(CommentEnd, 2);
        if (end == head.npos)
            return false;
        skip(head, end + CommentEnd.size());
        head = withoutBlanks(head);
    }
    constexpr std::string_view Keyword = "ISO-10303-21";
    if (!head.starts_with(Keyword))
        return false;
    skip(head, Keyword.size());
    return withoutBlanks(head).starts_with(';');
}

/// In each line of an IGES file stands, behind 72 columns of data, a letter for its section and the
/// line's number there. The first section is the start section, or the flag of a compressed file.
bool isIges(std::string_view head)
{
    constexpr std::size_t SectionColumn = 72;
    constexpr std::size_t LineLength = 80;
    std::string_view const line = head.substr(0, head.find_first_of("\r\n"));
    if (line.size() < LineLength || (line[SectionColumn] != 'S' && line[SectionColumn] != 'C'))
        return false;
    std::string_view number = line.substr(SectionColumn + 1, LineLength - SectionColumn - 1);
    skip(number, number.find_first_not_of(" 0"));
    return number == "1";
}

bool isBrep(std::string_view head)
{
    head = withoutBlanks(head);
    return head.starts_with("DBRep_DrawableShape") || head.starts_with("CASCADE Topology V") ||
           head.starts_with("Open CASCADE Topology V");
}

/// A binary file is as long as the count behind its header of 80 bytes says, whatever the header
/// holds.
bool isBinaryStl(std::string_view head, long long size)
{
    constexpr std::size_t HeaderSize = 80;
    constexpr long long TriangleSize = 50;
    static_assert(std::endian::native == std::endian::little);
    std::uint32_t count = 0;
    if (head.size() < HeaderSize + sizeof(count))
        return false;
    std::memcpy(&count, head.data() + HeaderSize, sizeof(count));
    return size == static_cast<long long>(HeaderSize + sizeof(count)) + count * TriangleSize;
}

/// A line "solid" with or without a name, and behind it a line that begins with "facet" or, where
/// there is none, "endsolid".
bool isAsciiStl(std::string_view head)
{
    constexpr std::string_view Solid = "solid";
    head = withoutBlanks(withoutMark(head));
    if (!beginsWith(head, Solid))
        return false;
    skip(head, Solid.size());
    if (head.empty() || Blanks.find(head.front()) == Blanks.npos)
        return false;
    skip(head, head.find_first_of("\r\n"));
    head = withoutBlanks(head);
    return beginsWith(head, "facet") || beginsWith(head, "endsolid");
}

/// "Version 9.5" and more text in 80 bytes, and behind them the order of bytes, 0 or 1, which text
/// does not hold.
bool isJt(std::string_view head)
{
    constexpr std::string_view Version = "Version ";
    constexpr std::size_t ByteOrderAt = 80;
    if (!head.starts_with(Version) || head.size() <= ByteOrderAt ||
        (head[ByteOrderAt] != '\0' && head[ByteOrderAt] != '\1'))
        return false;
    skip(head, Version.size());
    std::size_t const digits = head.find_first_not_of("0123456789");
    return digits > 0 && digits != head.npos && head[digits] == '.';
}

FileContent contentOf(std::string_view head, long long size)
{
    constexpr std::string_view U3d("U3D\0", 4);
    // Its header may hold anything, the beginning of another format too.
    if (isBinaryStl(head, size))
        return FileContent::Stl;
    if (isStep(head))
        return FileContent::Step;
    if (isIges(head))
        return FileContent::Iges;
    if (isBrep(head))
        return FileContent::Brep;
    if (isAsciiStl(head))
        return FileContent::Stl;
    if (isJt(head))
        return FileContent::Jt;
    if (head.starts_with("3D Geometry File Format"))
        return FileContent::Rhino;
    if (head.starts_with(U3d))
        return FileContent::U3d;
    if (head.starts_with("%PDF-"))
        return FileContent::Pdf;
    return FileContent::Unknown;
}

} // namespace

FileContent contentOf(std::string const & path)
{
    // Whoever writes to a pipe would take the opening of it for that of its reader.
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return FileContent::Unknown;
    try {
        translator_kit::InputFile file(path);
        char bytes[HeadSize];
        std::size_t const size = file.read(bytes, HeadSize);
        return contentOf(std::string_view(bytes, size), file.size());
    } catch (translator_kit::Failure const &) {
        return FileContent::Unknown;
    }
}

char const * nameOf(FileContent content)
{
    switch (content) {
    case FileContent::Step:
        return "STEP";
    case FileContent::Iges:
        return "IGES";
    case FileContent::Brep:
        return "BREP";
    case FileContent::Stl:
        return "STL";
    case FileContent::Jt:
        return "JT";
    case FileContent::Rhino:
        return "Rhino 3DM";
    case FileContent::U3d:
        return "U3D";
    case FileContent::Pdf:
        return "PDF";
    case FileContent::Unknown:
        break;
    }
    return "unknown";
}

} // namespace keld
