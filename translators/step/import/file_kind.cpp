#include "import/file_kind.h"

#include <keld-translator-kit/input_file.h>
#include <keld-translator-kit/translator.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <string_view>

namespace step {

namespace {

using translator_kit::Failure;
using translator_kit::Reason;

/// STEP files may begin with blanks and comments.
constexpr std::size_t HeadSize = 4096;

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
    number.remove_prefix(std::min(number.find_first_not_of(" 0"), number.size()));
    return number == "1";
}

std::string withArticle(std::string const & name)
{
    return (name == "IGES" ? "an " : "a ") + name;
}

bool contains(std::string_view head, std::string_view words)
{
    return head.find(words) != head.npos;
}

} // namespace

FileKind fileKindOf(std::string const & path)
{
    translator_kit::InputFile file(path);
    char bytes[HeadSize];
    std::string_view const head(bytes, file.read(bytes, HeadSize));
    if (head.empty())
        throw Failure(Reason::EmptyModel, path + " is empty.");
    if (contains(head, "ISO-10303-21"))
        return FileKind::Step;
    if (isIges(head))
        return FileKind::Iges;
    if (contains(head, "Open CASCADE Topology V"))
        return FileKind::BrepBinary;
    if (contains(head, "CASCADE Topology V") || contains(head, "DBRep_DrawableShape"))
        return FileKind::BrepText;
    throw Failure(Reason::UnsupportedFileType, path + " is no STEP, IGES or BREP file.");
}

char const * nameOf(FileKind kind)
{
    return kind == FileKind::Step ? "STEP" : kind == FileKind::Iges ? "IGES" : "BREP";
}

std::string disagreement(std::string const & path, FileKind kind)
{
    std::string suffix = std::filesystem::path(path).extension();
    std::transform(suffix.begin(), suffix.end(), suffix.begin(),
                   [](unsigned char c) { return static_cast<char>(std::tolower(c)); });
    std::string const isStep = ".step .stp .p21";
    std::string const isIgesName = ".iges .igs";
    std::string const expected = suffix.size() < 3                              ? ""
                                 : isStep.find(suffix) != std::string::npos     ? "STEP"
                                 : isIgesName.find(suffix) != std::string::npos ? "IGES"
                                 : suffix == ".brep"                            ? "BREP"
                                                                                : "";
    if (expected.empty() || expected == nameOf(kind))
        return {};
    return path + " is " + withArticle(nameOf(kind)) + " file, although it is named like " +
           withArticle(expected) + " file.";
}

} // namespace step
