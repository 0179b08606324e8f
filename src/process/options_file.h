#ifndef KELD_TRANSL_SRC_PROCESS_OPTIONS_FILE_H
#define KELD_TRANSL_SRC_PROCESS_OPTIONS_FILE_H

#include <keld-transl/attributes/option.h>

#include <libxml/tree.h>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// The XML form of options: a root element over one flat list of "data" elements, whose place alone
/// tells their meaning. Per option: name, description, number of values; per value: type, content.
namespace transl_tk::options_file {

inline constexpr char rootName[] = "vorn_translator_options_file";

/// A larger file is neither written nor read. The XML library takes no text beyond 10 million
/// bytes.
inline constexpr long long maximumSize = 8LL * 1024 * 1024;

struct FreeDocument
{
    void operator()(xmlDoc * document) const { xmlFreeDoc(document); }
};
using Document = std::unique_ptr<xmlDoc, FreeDocument>;

/// The index of the first option of which XML cannot hold a text, none when all can be written.
std::optional<std::size_t> firstUnwritable(std::vector<IOption *> const & options);

/// The document of `options`, all of which can be written.
Document write(std::vector<IOption *> const & options);

struct FreeOption
{
    void operator()(IOption * option) const { IOption::destruct(option); }
};
using Options = std::vector<std::unique_ptr<IOption, FreeOption>>;

/// The options in `text`, which need not be sound; none when it is not well-formed, has a document
/// type, or its root is empty. A root of another name has no options.
std::optional<Options> read(std::string_view text);

/// The content of the file at `path`; none when it is no regular file, cannot be read, or is larger
/// than `maximumSize`. A link is not followed.
std::optional<std::string> content(std::string const & path);

} // namespace transl_tk::options_file

#endif
