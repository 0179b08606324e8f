#include "model/entity.h"

#include <keld-transl/reporting/html_logger_entry.h>

#include <algorithm>
#include <iterator>
#include <memory>

namespace transl_tk {

namespace {

/// The names of entity types from 1 on.
constexpr char const * names[] = {
    "Assembly",   "Part",     "Instance",   "Point",        "CoordinateSystem",
    "Axis",       "Curve",    "UV_Curve",   "Spoke",        "Vertex",
    "Region",     "Facade",   "Edge",       "Fin",          "Loop",
    "Shell",      "Surface",  "Face",       "Facet",        "Body",
    "Welds",      "Model",    "Attributes", "PMIs",         "Layers",
    "Filters",    "Sets",     "Categories", "Publications", "Annotations",
    "Dimensions", "Features", "Block",      "Object",       "total",
};
static_assert(std::size(names) == HtmlLoggerEntry::Total);

class ProxyHtmlLoggerEntry final : public HtmlLoggerEntry, public Pooled<ProxyHtmlLoggerEntry>
{
public:
    ProxyHtmlLoggerEntry(char const * text, EntityType entityType, EntryType entryType)
        : m_EntityType(entityType), m_EntryType(entryType), m_Text(text)
    {}

    EntityType getEntityType() override { return m_EntityType; }
    EntryType getEntryType() override { return m_EntryType; }
    char const * getText() override { return m_Text.c_str(); }

private:
    EntityType m_EntityType;
    EntryType m_EntryType;
    std::string m_Text;
};

} // namespace

HtmlLoggerEntry::~HtmlLoggerEntry() = default;

HtmlLoggerEntry * HtmlLoggerEntry::create(char const * text, EntityType const & entityType,
                                          EntryType const & entryType)
{
    SubPool * const subPool = CurrentSubPool::get();
    if (subPool == nullptr || text == nullptr)
        return nullptr;
    auto entry = std::make_unique<ProxyHtmlLoggerEntry>(text, entityType, entryType);
    subPool->m_LoggerEntries.push_back(entry.get());
    return entry.release();
}

HtmlLoggerEntry * HtmlLoggerEntry::extract(char const * text, EntityType const & entityType,
                                           EntryType const & entryType)
{
    return text != nullptr ? new ProxyHtmlLoggerEntry(text, entityType, entryType) : nullptr;
}

void HtmlLoggerEntry::destruct(HtmlLoggerEntry * entry)
{
    delete entry;
}

std::string HtmlLoggerEntry::baseToStringMapping(EntityType const & entityType)
{
    if (entityType < Assembly || entityType > Total)
        return {};
    return names[entityType - 1];
}

HtmlLoggerEntry::EntityType HtmlLoggerEntry::stringToBaseMapping(std::string const & name)
{
    auto const * const found = std::find(std::begin(names), std::end(names), name);
    return static_cast<EntityType>(found != std::end(names) ? found - std::begin(names) + 1 : 0);
}

} // namespace transl_tk
