#include "run_summary.h"

#include <keld-transl/model/pool.h>
#include <keld-transl/product/component.h>
#include <keld-transl/product/instance.h>
#include <keld-transl/reporting/html_logger.h>

#include <map>
#include <memory>

namespace keld {

using cad::ILoggerPolicy;
using transl_tk::Component;
using transl_tk::Hierarchy;
using transl_tk::HtmlLogger;
using transl_tk::HtmlLoggerEntry;
using transl_tk::Instance;
using transl_tk::SubPool;

namespace {

constexpr int LogLists = 6;
constexpr unsigned NotCounted = 0xFFFFFFFF;

using Summary = std::unique_ptr<HtmlLogger, void (*)(HtmlLogger *)>;
using Tally = std::map<int, unsigned>;

HtmlLogger::EntityType entityType(int kind)
{
    return static_cast<HtmlLogger::EntityType>(kind);
}

SummaryEntry copyOf(HtmlLoggerEntry & entry)
{
    return {entry.getEntityType(), entry.getEntryType(), entry.getText()};
}

std::vector<SummaryEntry> entriesOf(HtmlLogger & logger)
{
    std::vector<SummaryEntry> entries;
    logger.forEachEntry(
        [](HtmlLoggerEntry * entry, void * target) {
            static_cast<std::vector<SummaryEntry> *>(target)->push_back(copyOf(*entry));
            return true;
        },
        &entries);
    return entries;
}

/// Says for each kind how many of its entities failed: as many as there are errors about it.
void setFailedCounts(HtmlLogger & logger, Tally const & errors)
{
    unsigned total = 0;
    for (auto const & [kind, count] : errors) {
        logger.setFailedCount(entityType(kind), count);
        total += count;
    }
    logger.setFailedCount(HtmlLoggerEntry::Total, total);
}

/// The name of the one component on top that is placed nowhere; where there is not one alone, what
/// the toolkit calls the model. For that, whatever hangs below no assembly is on top, those
/// components included that instances place.
std::string modelName(HtmlLogger & logger, std::vector<ProductNode> const & tree)
{
    Component * unplaced = nullptr;
    for (ProductNode const & node : tree) {
        if (node.level != 0 || node.hierarchy->getHierarchyType() == Hierarchy::Instance)
            continue;
        auto * const component = static_cast<Component *>(node.hierarchy);
        if (!component->forEachInstance([](Instance *, void *) { return false; }, nullptr))
            continue;
        if (unplaced != nullptr)
            return logger.getModelName();
        unplaced = component;
    }
    return unplaced == nullptr ? logger.getModelName() : shownName(*unplaced);
}

/// Says how many entities there are of the kinds that the toolkit leaves to hosts.
void setOwnCounts(HtmlLogger & logger, SubPool const & model)
{
    logger.setEntityCount(HtmlLoggerEntry::Vertex,
                          static_cast<unsigned>(model.m_Vertices.m_Entities.size()));
    unsigned total = 0;
    for (int kind = HtmlLoggerEntry::Assembly; kind < HtmlLoggerEntry::Total; ++kind) {
        unsigned const count = logger.getEntityCount(entityType(kind));
        total += count != NotCounted ? count : 0;
    }
    logger.setEntityCount(HtmlLoggerEntry::Total, total);
}

KindCount countOf(HtmlLogger & logger, int kind, unsigned reported)
{
    KindCount result;
    result.kind = kind;
    result.name = kindName(kind);
    unsigned const held = logger.getEntityCount(entityType(kind));
    unsigned const failed = logger.getFailedCount(entityType(kind));
    if (held != NotCounted)
        result.held = held;
    result.failed = failed != NotCounted ? failed : 0;
    result.reported = reported;
    return result;
}

} // namespace

RunStatus runStatus(ExitCode code)
{
    if (code == Success)
        return Completed;
    return code == RunCancelled ? Cancelled : Failed;
}

char const * statusName(int status)
{
    return status == Completed ? "completed" : status == Cancelled ? "cancelled" : "failed";
}

char const * entryTypeName(int type)
{
    constexpr char const * Names[] = {"information", "warning", "error"};
    return type >= Information && type <= Error ? Names[type] : "other";
}

char const * logTypeName(ILoggerPolicy::SubType type)
{
    switch (type) {
    case ILoggerPolicy::Indented:
        return "indented";
    case ILoggerPolicy::ErrorLine:
        return "error";
    case ILoggerPolicy::WarningLine:
        return "warning";
    default:
        return "text";
    }
}

std::string kindName(int kind)
{
    std::string const name = HtmlLoggerEntry::baseToStringMapping(entityType(kind));
    return name.empty() ? "Kind " + std::to_string(kind) : name;
}

std::vector<LogLine> logLines(SubPool & model)
{
    struct Target
    {
        std::vector<LogLine> lines;
        int list = 0;
    } target;
    for (target.list = 1; target.list <= LogLists; ++target.list)
        model._logger()->for_each_entry(
            target.list,
            [](char const * text, ILoggerPolicy::SubType const & type, bool const & shown,
               void * user) {
                auto & found = *static_cast<Target *>(user);
                found.lines.push_back({found.list, type, text, shown});
                return true;
            },
            &target);
    return std::move(target.lines);
}

std::vector<SummaryEntry> reportEntries(SubPool const & model)
{
    std::vector<SummaryEntry> entries;
    for (HtmlLoggerEntry * const entry : model.m_LoggerEntries)
        entries.push_back(copyOf(*entry));
    return entries;
}

RunSummary summariseRun(std::string const & file, RunOutcome const & outcome)
{
    SubPool & model = *transl_tk::Pool::getInstance()->currentSubPool();
    RunSummary summary;
    summary.file = file;
    summary.outcome = outcome;
    summary.status = runStatus(outcome.code);
    Summary const logger(
        HtmlLogger::create(file, static_cast<HtmlLogger::status_type>(summary.status)),
        HtmlLogger::destruct);

    summary.entries = entriesOf(*logger);
    Tally reported;
    Tally errors;
    for (SummaryEntry const & entry : summary.entries) {
        ++reported[entry.kind];
        if (entry.type == Error)
            ++errors[entry.kind];
    }
    setFailedCounts(*logger, errors);
    setOwnCounts(*logger, model);

    for (int kind = HtmlLoggerEntry::Assembly; kind < HtmlLoggerEntry::Total; ++kind)
        reported.try_emplace(kind, 0);
    for (auto const & [kind, count] : reported) {
        KindCount const counted = countOf(*logger, kind, count);
        if (kind != HtmlLoggerEntry::Total && logger->hasEntity(entityType(kind)))
            summary.kinds.push_back(counted);
    }
    summary.total =
        countOf(*logger, HtmlLoggerEntry::Total, static_cast<unsigned>(summary.entries.size()));
    for (int type = Information; type <= Error; ++type)
        summary.entryCounts[static_cast<std::size_t>(type)] =
            logger->getEntryCount(static_cast<HtmlLogger::EntryType>(type));
    summary.log = logLines(model);
    for (LogLine const & line : summary.log)
        summary.logErrors += line.type == ILoggerPolicy::ErrorLine;
    summary.tree = productTree();
    summary.model = modelName(*logger, summary.tree);
    return summary;
}

} // namespace keld
