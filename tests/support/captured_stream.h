#ifndef KELD_TESTS_SUPPORT_CAPTURED_STREAM_H
#define KELD_TESTS_SUPPORT_CAPTURED_STREAM_H

#include <ostream>
#include <sstream>
#include <string>

namespace tests {

/// Catches what is written to a standard stream, such as std::cout, while it lives.
class CapturedStream
{
public:
    explicit CapturedStream(std::ostream & stream)
        : m_Stream(stream), m_Old(stream.rdbuf(m_Caught.rdbuf()))
    {}
    ~CapturedStream() { m_Stream.rdbuf(m_Old); }
    CapturedStream(CapturedStream const &) = delete;
    CapturedStream & operator=(CapturedStream const &) = delete;

    std::string text() const { return m_Caught.str(); }

private:
    std::ostringstream m_Caught;
    std::ostream & m_Stream;
    std::streambuf * m_Old;
};

} // namespace tests

#endif
