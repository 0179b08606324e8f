#ifndef KELD_TRANSL_REPORTING_LOGGER_POLICY_H
#define KELD_TRANSL_REPORTING_LOGGER_POLICY_H

#include <keld-transl/export.h>

#include <string>

namespace transl_tk {
class Component;
}

namespace cad {

using transl_tk::Component;

/// The log of a model, as the toolkit sees it. A host may derive its own.
///
/// A log belongs to the thread that owns the model.
class KELD_TRANSL_EXPORT ILoggerPolicy
{
public:
    /// Number of a list of entries. 1 to 6 are kept; the numbers' meaning belongs to the hosts,
    /// except that lists 1 to 4 may echo to the console.
    using Type = int;

    enum SubType : int {
        Text = 0,
        Indented = 1,
        ErrorLine = 2,
        WarningLine = 3,
        Any = 4 ///< for filters only: every entry
    };

    /// What `for_each_entry` calls for an entry; false stops the walk.
    using Callback = bool (*)(char const * text, SubType const & subType, bool const & show,
                              void * context);

protected:
    ILoggerPolicy() = default;
    ILoggerPolicy(ILoggerPolicy const &) = default;
    ILoggerPolicy & operator=(ILoggerPolicy const &) = default;

public:
    /// A mark for hosts, false at first. The toolkit does not read it.
    bool & shared() { return m_Shared; }

    /// Removes all entries.
    virtual void clear() = 0;

    /// The part of the model that is being processed, null when there is none. A crash report
    /// quotes its name. It stays owned by the model.
    virtual void setProcessingComponent(Component const * component) = 0;
    virtual Component const * getProcessingComponent() = 0;

    /// Appends an entry to list `type`. An empty text, and a type outside 1 to 6, adds nothing.
    virtual void addEntry(char const * text, Type const & type, SubType const & subType,
                          bool const & show) = 0;

    /// The same with sub-type `Text`, shown.
    virtual void addEntry(char const * text, Type const & type) = 0;

    /// Whether list `type` holds an entry of sub-type `ErrorLine`.
    virtual bool hasEntryError(Type const & type) = 0;

    /// The matching entries of list `type` as one text, each with its sub-type's prefix, and a line
    /// feed, or "<br>" with `html`, behind it. `shownOnly` leaves out entries that are not shown.
    virtual std::string GetEntriesOfType(Type const & type, SubType const & subType,
                                         bool const & shownOnly, bool const & html) = 0;

    /// Calls `callback` for the entries of list `type` that match `subType`, in order. Returns
    /// false when the callback stopped the walk. `shownOnly` has no effect.
    virtual bool for_each_entry(Type const & type, Callback callback, void * context,
                                SubType const & subType, bool const & shownOnly) = 0;

    /// The same for all entries of the list.
    virtual bool for_each_entry(Type const & type, Callback callback, void * context) = 0;

    virtual ~ILoggerPolicy();

private:
    bool m_Shared = false;
};

/// A log that swallows everything.
class KELD_TRANSL_EXPORT LoggerInactive : public ILoggerPolicy
{
public:
    LoggerInactive() = default;
    ~LoggerInactive() override;

    void clear() override;
    void setProcessingComponent(Component const * component) override;
    Component const * getProcessingComponent() override;
    void addEntry(char const * text, Type const & type, SubType const & subType,
                  bool const & show) override;
    void addEntry(char const * text, Type const & type) override;
    bool hasEntryError(Type const & type) override;
    std::string GetEntriesOfType(Type const & type, SubType const & subType, bool const & shownOnly,
                                 bool const & html) override;
    bool for_each_entry(Type const & type, Callback callback, void * context,
                        SubType const & subType, bool const & shownOnly) override;
    bool for_each_entry(Type const & type, Callback callback, void * context) override;
};

} // namespace cad

#endif
