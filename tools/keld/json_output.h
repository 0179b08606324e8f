#ifndef KELD_TOOLS_JSON_OUTPUT_H
#define KELD_TOOLS_JSON_OUTPUT_H

#include <functional>
#include <nlohmann/json_fwd.hpp>
#include <string>
#include <string_view>

namespace keld {

/// Writes one JSON object member by member, so that a large model does not stand in memory twice.
/// Each member, and each element of its arrays, has a line of its own.
class JsonOutput
{
public:
    /// Gets the text in pieces.
    using Sink = std::function<void(std::string_view)>;

    explicit JsonOutput(Sink sink);
    JsonOutput(JsonOutput const &) = delete;
    JsonOutput & operator=(JsonOutput const &) = delete;

    void member(std::string const & key, nlohmann::ordered_json const & value);

    void beginArray(std::string const & key);
    void element(nlohmann::ordered_json const & value);
    void endArray();

    /// Ends the object; nothing may follow.
    void end();

private:
    void key(std::string const & name);
    void write(nlohmann::ordered_json const & value);
    void flush();

    Sink m_Sink;
    std::string m_Text;
    bool m_FirstMember = true;
    bool m_FirstElement = true;
};

/// A sink: standard output.
void printText(std::string_view text);

/// A number; one that JSON cannot write is the text "nan", "inf" or "-inf".
nlohmann::ordered_json jsonNumber(double number);

/// `count` numbers as an array.
nlohmann::ordered_json jsonNumbers(double const * numbers, std::size_t count);

} // namespace keld

#endif
