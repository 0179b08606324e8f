#include "json_output.h"

#include <cmath>
#include <cstdio>
#include <nlohmann/json.hpp>

namespace keld {

using nlohmann::ordered_json;

namespace {

constexpr std::size_t PieceSize = 1 << 16;

} // namespace

JsonOutput::JsonOutput(Sink sink) : m_Sink(std::move(sink)), m_Text("{") {}

void JsonOutput::member(std::string const & name, ordered_json const & value)
{
    key(name);
    write(value);
}

void JsonOutput::beginArray(std::string const & name)
{
    key(name);
    m_Text += "[";
    m_FirstElement = true;
}

void JsonOutput::element(ordered_json const & value)
{
    m_Text += m_FirstElement ? "\n" : ",\n";
    m_FirstElement = false;
    write(value);
}

void JsonOutput::endArray()
{
    m_Text += m_FirstElement ? "]" : "\n]";
}

void JsonOutput::end()
{
    m_Text += "\n}\n";
    flush();
}

void JsonOutput::key(std::string const & name)
{
    m_Text += m_FirstMember ? "\n" : ",\n";
    m_FirstMember = false;
    write(name);
    m_Text += ": ";
}

void JsonOutput::write(ordered_json const & value)
{
    constexpr int OneLine = -1;
    m_Text += value.dump(OneLine, ' ', false, ordered_json::error_handler_t::replace);
    if (m_Text.size() >= PieceSize)
        flush();
}

void JsonOutput::flush()
{
    m_Sink(m_Text);
    m_Text.clear();
}

void printText(std::string_view text)
{
    std::fwrite(text.data(), 1, text.size(), stdout);
}

ordered_json jsonNumber(double number)
{
    if (std::isnan(number))
        return "nan";
    if (std::isinf(number))
        return number > 0 ? "inf" : "-inf";
    return number;
}

ordered_json jsonNumbers(double const * numbers, std::size_t count)
{
    ordered_json result = ordered_json::array();
    for (std::size_t i = 0; i < count; ++i)
        result.push_back(jsonNumber(numbers[i]));
    return result;
}

} // namespace keld
