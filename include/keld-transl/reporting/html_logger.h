#ifndef KELD_TRANSL_REPORTING_HTML_LOGGER_H
#define KELD_TRANSL_REPORTING_HTML_LOGGER_H

#include <keld-transl/reporting/html_logger_entry.h>

#include <string>

namespace transl_tk {

/// The data of the page that sums a run up: the file, what the model holds, what there is to say
/// about it, and the product tree. The host makes the page.
///
/// Belongs to the thread that owns the model.
class KELD_TRANSL_EXPORT HtmlLogger
{
protected:
    HtmlLogger() = default;
    virtual ~HtmlLogger();

public:
    using EntityType = HtmlLoggerEntry::EntityType;
    using EntryType = HtmlLoggerEntry::EntryType;

    /// How the run ended, in the host's own numbers. With 2, a model without product structure
    /// leaves the model's name empty.
    enum status_type : int {};

    HtmlLogger(HtmlLogger const &) = default;
    HtmlLogger & operator=(HtmlLogger const &) = default;

    /// Collects from the current sub-pool: how many entities of each kind there are, copies of its
    /// report entries, name and tree of the top assembly. That is made when there is none yet, see
    /// `Hierarchy::getTopAssembly`. Without a pool there is the file's name alone.
    static HtmlLogger * create(std::string const & fileName, status_type const & status);
    static void destruct(HtmlLogger * logger);

    /// Calls `callback` for the entries in order of adding. Stops at the first false and returns
    /// it.
    virtual bool forEachEntry(bool (*callback)(HtmlLoggerEntry *, void *), void * context) = 0;

    virtual std::string getFileName() = 0;
    virtual status_type getStatus() = 0;

    /// The product tree as one HTML fragment per node, indented by four blanks for each level, and
    /// by no more than those of level 1000. Names stand in it as they are, not escaped. Empty below
    /// an assembly of id -1. A tree with an assembly that is its own descendant ends there.
    virtual std::string getTreeText() = 0;

    /// Name of the top assembly; of the last child of one of id -1; else that of the file.
    virtual std::string getModelName() = 0;

    /// Appends and adopts an entry; null is passed over.
    virtual void addEntry(HtmlLoggerEntry * entry) = 0;

    /// How many entities of a kind the model holds, and how many of them failed. `create` counts
    /// the first, the host sets the second.
    virtual void setEntityCount(EntityType const & type, unsigned const & count) = 0;
    virtual void setFailedCount(EntityType const & type, unsigned const & count) = 0;
    /// 0xFFFFFFFF when nothing has been said about the kind.
    virtual unsigned getEntityCount(EntityType const & type) = 0;
    virtual unsigned getFailedCount(EntityType const & type) = 0;

    /// Whether a kind has an entry or a count other than 0. Counts that nothing has been said about
    /// become 0.
    virtual bool hasEntity(EntityType const & type) = 0;

    /// How many entries of a type there are; 0 for a type other than 0, 1 and 2.
    virtual unsigned getEntryCount(EntryType const & type) = 0;
};

} // namespace transl_tk

#endif
