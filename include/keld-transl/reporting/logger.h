#ifndef KELD_TRANSL_REPORTING_LOGGER_H
#define KELD_TRANSL_REPORTING_LOGGER_H

#include <keld-transl/reporting/logger_policy.h>

#include <map>
#include <memory>
#include <vector>

namespace transl_tk {

/// The log proper: six lists of entries, which travel with the model.
///
/// In a process that serves no remote translator, entries of lists 1 to 4 that are shown are also
/// written to standard output.
class KELD_TRANSL_EXPORT Logger : public cad::ILoggerPolicy
{
public:
    Logger();
    Logger(Logger const &) = delete;
    Logger & operator=(Logger const &) = delete;
    ~Logger() override;

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

private:
    struct Entry;

    std::map<Type, std::vector<std::unique_ptr<Entry>>> m_Entries;
    Component const * m_ProcessingComponent = nullptr;
};

} // namespace transl_tk

#endif
