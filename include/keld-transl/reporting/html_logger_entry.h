#ifndef KELD_TRANSL_REPORTING_HTML_LOGGER_ENTRY_H
#define KELD_TRANSL_REPORTING_HTML_LOGGER_ENTRY_H

#include <keld-transl/export.h>

#include <string>

namespace transl_tk {

/// One entry of the report page: a text about a kind of entity. Entries travel with the model, so
/// that what a translator has to say stands on the host's page.
class KELD_TRANSL_EXPORT HtmlLoggerEntry
{
protected:
    HtmlLoggerEntry() = default;
    virtual ~HtmlLoggerEntry();

public:
    /// What an entry is about. Other numbers are kept as they are; they have no name.
    enum EntityType : int {
        Assembly = 1,
        Part = 2,
        Instance = 3,
        Point = 4,
        CoordinateSystem = 5,
        Axis = 6,
        Curve = 7,
        UVCurve = 8,
        Spoke = 9,
        Vertex = 10,
        Region = 11,
        Facade = 12,
        Edge = 13,
        Fin = 14,
        Loop = 15,
        Shell = 16,
        Surface = 17,
        Face = 18,
        Facet = 19,
        Body = 20,
        Welds = 21,
        Model = 22,
        Attributes = 23,
        PMIs = 24,
        Layers = 25,
        Filters = 26,
        Sets = 27,
        Categories = 28,
        Publications = 29,
        Annotations = 30,
        Dimensions = 31,
        Features = 32,
        Block = 33,
        Object = 34,
        Total = 35
    };

    /// 0, 1 or 2, each counted by itself; what they stand for is the host's matter.
    enum EntryType : int {};

    HtmlLoggerEntry(HtmlLoggerEntry const &) = default;
    HtmlLoggerEntry & operator=(HtmlLoggerEntry const &) = default;

    /// Makes an entry of the current sub-pool, which owns it. Null when there is no pool or `text`
    /// is null.
    static HtmlLoggerEntry * create(char const * text, EntityType const & entityType,
                                    EntryType const & entryType);
    /// Makes an entry that the caller owns. Null when `text` is null.
    static HtmlLoggerEntry * extract(char const * text, EntityType const & entityType,
                                     EntryType const & entryType);
    static void destruct(HtmlLoggerEntry * entry);

    /// The name of a type, such as "UV_Curve"; empty for a number without one.
    static std::string baseToStringMapping(EntityType const & entityType);
    /// The type of a name, case included; 0 for any other text.
    static EntityType stringToBaseMapping(std::string const & name);

    virtual EntityType getEntityType() = 0;
    virtual EntryType getEntryType() = 0;
    /// Valid as long as the entry.
    virtual char const * getText() = 0;
};

} // namespace transl_tk

#endif
