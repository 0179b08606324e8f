#ifndef KELD_TOOLS_FILE_CONTENT_H
#define KELD_TOOLS_FILE_CONTENT_H

#include <string>

namespace keld {

/// The formats that files show by how they begin.
enum class FileContent { Unknown, Step, Iges, Brep, Stl, Jt, Rhino, U3d, Pdf };

/// What the file `path` is; its name is not looked at. `Unknown` also for what cannot be read and
/// for what is no regular file: a pipe is not even opened.
FileContent contentOf(std::string const & path);

/// "STEP", "IGES" and so on, for people.
char const * nameOf(FileContent content);

} // namespace keld

#endif
