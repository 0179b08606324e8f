#ifndef KELD_STEP_IMPORT_FILE_KIND_H
#define KELD_STEP_IMPORT_FILE_KIND_H

#include <string>

namespace step {

enum class FileKind { Step, Iges, BrepText, BrepBinary };

/// What the file `path` is, by its content: its name is not looked at. Throws `Failure` with
/// `Reason::UnsupportedFileType` for anything else, `Reason::EmptyModel` for an empty file, and
/// `Reason::Failed` for one that cannot be read.
FileKind fileKindOf(std::string const & path);

/// "STEP", "IGES" or "BREP".
char const * nameOf(FileKind kind);

/// What the suffix of `path` promises, in words for the log, where that is another kind than the
/// file is; else empty.
std::string disagreement(std::string const & path, FileKind kind);

} // namespace step

#endif
