#include <keld-transl/process/server.h>
#include <keld-transl/reporting/logger.h>

#include <algorithm>
#include <iostream>

namespace transl_tk {

namespace {

constexpr int firstList = 1;
constexpr int lastList = 6;
constexpr int lastEchoingList = 4;

struct Prefixes
{
    char const * text;
    char const * html;
};

constexpr Prefixes prefixes[] = {
    {"", ""},
    {"        ", "&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;&nbsp;"},
    {"    Error : ", "&nbsp;&nbsp;&nbsp;&nbsp;Error : "},
    {"    Warning : ", "&nbsp;&nbsp;&nbsp;&nbsp;Warning : "},
};

std::string prefixOf(cad::ILoggerPolicy::SubType subType, bool html)
{
    auto const index = static_cast<std::size_t>(subType);
    if (index >= std::size(prefixes))
        return {};
    return html ? prefixes[index].html : prefixes[index].text;
}

} // namespace

struct Logger::Entry
{
    std::string text;
    SubType subType;
    bool show;

    bool matches(SubType wanted) const { return wanted == Any || wanted == subType; }

    std::string form(bool html) const
    {
        return prefixOf(subType, html) + text + (html ? "<br>" : "\n");
    }
};

Logger::Logger()
{
    for (Type type = firstList; type <= lastList; ++type)
        m_Entries[type];
}

Logger::~Logger() = default;

void Logger::clear()
{
    for (Type type = firstList; type <= lastList; ++type)
        m_Entries[type].clear();
}

void Logger::setProcessingComponent(Component const * component)
{
    m_ProcessingComponent = component;
}

Component const * Logger::getProcessingComponent()
{
    return m_ProcessingComponent;
}

void Logger::addEntry(char const * text, Type const & type, SubType const & subType,
                      bool const & show)
{
    auto & entries = m_Entries[type];
    if (text == nullptr || *text == '\0')
        return;
    if (type < firstList || type > lastList)
        return;
    auto entry = std::make_unique<Entry>(Entry{text, subType, show});
    if (type <= lastEchoingList && show && !Server::isRemote())
        std::cout << entry->form(false);
    entries.push_back(std::move(entry));
}

void Logger::addEntry(char const * text, Type const & type)
{
    addEntry(text, type, Text, true);
}

bool Logger::hasEntryError(Type const & type)
{
    auto const & entries = m_Entries[type];
    return std::any_of(entries.begin(), entries.end(),
                       [](auto const & entry) { return entry->subType == ErrorLine; });
}

std::string Logger::GetEntriesOfType(Type const & type, SubType const & subType,
                                     bool const & shownOnly, bool const & html)
{
    std::string result;
    for (auto const & entry : m_Entries[type]) {
        if (entry->matches(subType) && (entry->show || !shownOnly))
            result += entry->form(html);
    }
    return result;
}

bool Logger::for_each_entry(Type const & type, Callback callback, void * context,
                            SubType const & subType, bool const &)
{
    // By index: the callback may log while it walks.
    auto const & entries = m_Entries[type];
    for (std::size_t i = 0; i < entries.size(); ++i) {
        Entry const & entry = *entries[i];
        if (entry.matches(subType) &&
            !callback(entry.text.c_str(), entry.subType, entry.show, context))
            return false;
    }
    return true;
}

bool Logger::for_each_entry(Type const & type, Callback callback, void * context)
{
    return for_each_entry(type, callback, context, Any, true);
}

} // namespace transl_tk
