#ifndef KELD_TRANSL_SRC_REPORTING_STREAM_IMPLEMENTATION_H
#define KELD_TRANSL_SRC_REPORTING_STREAM_IMPLEMENTATION_H

#include <keld-transl/reporting/stream_policy.h>

#include <array>
#include <concepts>
#include <memory>
#include <sstream>
#include <string>
#include <utility>

namespace transl_tk {

/// Messages go to standard error and standard output.
class StreamOn
{
public:
    StreamOn();

    /// The stream for `type`, with the prefix written. A type that has no stream of its own gets
    /// one that discards.
    std::ostream & post(StreamPolicy::Type type);

private:
    std::array<std::ostream *, 4> m_Streams;
};

/// Messages are lost.
class StreamOff
{
public:
    StreamOff();
    std::ostream & post(StreamPolicy::Type type);

private:
    std::shared_ptr<std::ostream> m_Stream;
};

/// The report stays in memory.
class FileOff : public std::ostringstream
{
public:
    FileOff();
    FileOff(FileOff && other) noexcept : std::ostringstream(std::move(other)) {}
    FileOff & operator=(FileOff && other) noexcept = default;

    std::string getText() const { return str(); }
    std::string getFilePath() const { return {}; }
};

/// The report begins with a head that shows the environment, and is written to its file when this
/// object goes.
class FileOn : public std::ostringstream
{
public:
    /// A report in a temporary directory; without one that can be used, no head and no file.
    FileOn();

    /// A report in `directory`, which ends with a separator.
    explicit FileOn(std::string const & directory);

    /// Writes the file, replacing one of that name. A failure is not reported.
    ~FileOn() override;

    std::string getText() const { return str(); }
    std::string getFilePath() const { return m_FilePath; }

private:
    void begin(std::string const & directory);
    void ReportEnvironmentalVariables();

    std::string m_FilePath;
};

template <class Stream, class File> class StreamImplementation final : public StreamPolicy
{
public:
    StreamImplementation();

    /// With a file policy that takes a directory. A template, since an explicit instantiation of
    /// the class would otherwise ask for this member with every policy.
    template <class Directory>
    requires std::constructible_from<File, Directory const &>
    explicit StreamImplementation(Directory const & directory) : m_File(directory) {}

    ~StreamImplementation() override;

    std::ostream & post(Type type) override;
    std::string getText() override;
    std::string getFilePath() override;

private:
    Stream m_Stream;
    File m_File;
};

extern template class StreamImplementation<StreamOn, FileOn>;
extern template class StreamImplementation<StreamOn, FileOff>;
extern template class StreamImplementation<StreamOff, FileOn>;
extern template class StreamImplementation<StreamOff, FileOff>;

} // namespace transl_tk

#endif
