#include "report_json.h"

#include <nlohmann/json.hpp>

namespace keld {

using nlohmann::ordered_json;

namespace {

constexpr int FormatVersion = 1;

ordered_json countJson(KindCount const & kind)
{
    return {{"kind", kind.kind},
            {"name", kind.name},
            {"model", kind.held ? ordered_json(*kind.held) : ordered_json()},
            {"failed", kind.failed},
            {"reported", kind.reported}};
}

ordered_json nodeJson(ProductNode const & node)
{
    transl_tk::Hierarchy & hierarchy = *node.hierarchy;
    transl_tk::Component * const placed = placedComponent(hierarchy);
    return {{"level", node.level},
            {"id", hierarchy.getId()},
            {"type", typeName(hierarchy)},
            {"name", shownName(hierarchy)},
            {"component", placed != nullptr ? ordered_json(placed->getId()) : ordered_json()}};
}

} // namespace

ordered_json statusJson(RunOutcome const & outcome)
{
    RunStatus const status = runStatus(outcome.code);
    return {{"number", static_cast<int>(status)},
            {"name", statusName(status)},
            {"exitStatus", outcome.exitStatus},
            {"words", outcome.words},
            {"explanation", outcome.explanation}};
}

void writeEntriesJson(std::vector<SummaryEntry> const & entries, JsonOutput & output)
{
    output.beginArray("entries");
    for (SummaryEntry const & entry : entries)
        output.element({{"kind", entry.kind},
                        {"name", kindName(entry.kind)},
                        {"type", entry.type},
                        {"typeName", entryTypeName(entry.type)},
                        {"text", entry.text}});
    output.endArray();
}

void writeLogJson(std::vector<LogLine> const & log, JsonOutput & output)
{
    output.beginArray("log");
    for (LogLine const & line : log)
        output.element({{"list", line.list},
                        {"type", logTypeName(line.type)},
                        {"text", line.text},
                        {"shown", line.shown}});
    output.endArray();
}

void writeReportJson(RunSummary const & summary, JsonOutput & output)
{
    output.member("format", "keld report");
    output.member("version", FormatVersion);
    output.member("file", summary.file);
    output.member("model", summary.model);
    output.member("status", statusJson(summary.outcome));
    output.member("lostNothing", summary.lostNothing());
    output.member("entryCounts", {{"information", summary.entryCounts[Information]},
                                  {"warning", summary.entryCounts[Warning]},
                                  {"error", summary.entryCounts[Error]}});
    output.beginArray("counts");
    for (KindCount const & kind : summary.kinds)
        output.element(countJson(kind));
    output.endArray();
    output.member("total", countJson(summary.total));
    writeEntriesJson(summary.entries, output);
    writeLogJson(summary.log, output);
    output.beginArray("tree");
    for (ProductNode const & node : summary.tree)
        output.element(nodeJson(node));
    output.endArray();
    output.end();
}

} // namespace keld
