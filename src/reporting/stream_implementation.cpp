#include "reporting/stream_implementation.h"

#include "reporting/platform_text.h"

#include <keld-transl/reporting/lib_configure.h>

#include <cerrno>
#include <ctime>
#include <fcntl.h>
#include <iostream>
#include <locale>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace transl_tk {

namespace {

constexpr std::array prefixes{"    Error : ", "    Warning : ", "DEBUG: ", ""};

constexpr std::array<std::pair<char const *, char const *>, 7> headLines{{
    {" UGII_BASE_DIR   ", "UGII_BASE_DIR"},
    {" JT_OPEN_PATH    ", "JT_OPEN_PATH"},
    {" CT_LIB_PATH     ", "CT_LIB_PATH"},
    {" VORN_HOME       ", "VORN_HOME"},
    {" VORN_EXEC_DIR   ", "VORN_EXEC_DIR"},
    {" PWD             ", "PWD"},
    {" PATH            ", "PATH"},
}};

// The name can be guessed and the directory may be everybody's: a link of that name is not
// followed.
void writeFile(std::string const & path, std::string_view text)
{
    int const file =
        ::open(path.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_NOFOLLOW | O_CLOEXEC, 0666);
    if (file < 0)
        return;
    while (!text.empty()) {
        ssize_t const written = ::write(file, text.data(), text.size());
        if (written < 0 && errno == EINTR)
            continue;
        if (written <= 0)
            break;
        text.remove_prefix(static_cast<std::size_t>(written));
    }
    ::close(file);
}

} // namespace

StreamPolicy::~StreamPolicy() = default;

StreamOn::StreamOn() : m_Streams{&std::cerr, &std::cout, &std::cout, &std::cout} {}

std::ostream & StreamOn::post(StreamPolicy::Type type)
{
    auto const index = static_cast<std::size_t>(type);
    if (index >= m_Streams.size()) {
        static std::ostream discarding(nullptr);
        return discarding;
    }
    return *m_Streams[index] << prefixes[index];
}

StreamOff::StreamOff() : m_Stream(std::make_shared<std::ostream>(nullptr)) {}

std::ostream & StreamOff::post(StreamPolicy::Type)
{
    return *m_Stream;
}

// A report reads the same whatever locale the host has made the global one.
FileOff::FileOff()
{
    imbue(std::locale::classic());
}

FileOn::FileOn()
{
    imbue(std::locale::classic());
    char * found = nullptr;
    bool const isFound = getTempDirectoryPath(&found);
    PlatformText const directory(found);
    if (!isFound)
        return;
    if (iaccess(directory.get(), "wr") != 0) {
        std::cerr << "[TRANSL_REPORT_FILE] Cannot access directory \"" << directory.get() << "\"\n";
        return;
    }
    begin(directory.get());
}

FileOn::FileOn(std::string const & directory)
{
    imbue(std::locale::classic());
    begin(directory);
}

FileOn::~FileOn()
{
    if (!m_FilePath.empty())
        writeFile(m_FilePath, view());
}

void FileOn::begin(std::string const & directory)
{
    m_FilePath = directory + "transl_tk_report_" + std::to_string(std::time(nullptr)) + ".log";
    ReportEnvironmentalVariables();
}

void FileOn::ReportEnvironmentalVariables()
{
    std::string const rule(69, '=');
    *this << rule << std::endl;
    for (auto const & [label, variable] : headLines)
        *this << label << environmentText(variable).value_or("Not Found") << std::endl;
    *this << rule << std::endl << std::endl;
}

template <class Stream, class File>
StreamImplementation<Stream, File>::StreamImplementation() = default;

template <class Stream, class File>
StreamImplementation<Stream, File>::~StreamImplementation() = default;

template <class Stream, class File>
std::ostream & StreamImplementation<Stream, File>::post(Type type)
{
    if (type == Report)
        return m_File;
    return m_Stream.post(type);
}

template <class Stream, class File> std::string StreamImplementation<Stream, File>::getText()
{
    return m_File.getText();
}

template <class Stream, class File> std::string StreamImplementation<Stream, File>::getFilePath()
{
    return m_File.getFilePath();
}

template class StreamImplementation<StreamOn, FileOn>;
template class StreamImplementation<StreamOn, FileOff>;
template class StreamImplementation<StreamOff, FileOn>;
template class StreamImplementation<StreamOff, FileOff>;

} // namespace transl_tk
