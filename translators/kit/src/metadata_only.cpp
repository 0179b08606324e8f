#include "metadata_only.h"

#include <keld-common/files.h>
#include <keld-transl/metadata/cad_database.h>
#include <keld-transl/model/pool.h>
#include <keld-transl/reporting/logger_policy.h>

#include <string>
#include <vector>

namespace translator_kit {

using transl_tk::Pool;

namespace {

constexpr int LogLists = 6;

struct LogEntry
{
    std::string text;
    cad::ILoggerPolicy::SubType subType;
    bool show;
};

using LogEntries = std::vector<LogEntry>;

bool addTo(char const * text, cad::ILoggerPolicy::SubType const & subType, bool const & show,
           void * entries)
{
    static_cast<LogEntries *>(entries)->push_back({text, subType, show});
    return true;
}

} // namespace

void keepMetadataOnly(transl_tk::DataBasePolicy & policy)
{
    // The log goes with the model that is emptied; what it says to the user is still to be said.
    cad::ILoggerPolicy & log = *Pool::getInstance()->logger();
    LogEntries entries[LogLists];
    for (int list = 1; list <= LogLists; ++list)
        log.for_each_entry(list, addTo, &entries[list - 1]);

    // A process of its own: nobody else here is asked whether metadata is stored.
    setDatabaseStorage(1);
    transl_tk::addDataCadDB(&policy);

    for (int list = 1; list <= LogLists; ++list)
        for (LogEntry const & entry : entries[list - 1])
            log.addEntry(entry.text.c_str(), list, entry.subType, entry.show);
}

} // namespace translator_kit
