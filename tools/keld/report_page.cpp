#include "report_page.h"

#include "report_style.h"
#include "safe_text.h"
#include "view/view_section.h"

#include <algorithm>
#include <span>
#include <unordered_map>

namespace keld {

using cad::ILoggerPolicy;
using transl_tk::Component;
using transl_tk::Hierarchy;

namespace {

constexpr std::size_t MostRows = 10000;
constexpr std::size_t MostLosses = 5; ///< of a kind

/// Further levels of the tree are not indented, and are told by their number.
constexpr std::size_t DeepestIndent = 12;

std::string count(std::size_t number, std::string const & one, std::string const & many)
{
    return std::to_string(number) + " " + (number == 1 ? one : many);
}

/// `text` inside an element of its own, so that its direction of writing moves nothing around it.
std::string isolated(std::string const & text, std::string const & className)
{
    return "<bdi class=\"" + className + "\">" + htmlText(text) + "</bdi>";
}

std::string badge(std::string const & className, std::string const & text)
{
    return "<span class=\"badge " + className + "\">" + htmlText(text) + "</span>";
}

std::string section(std::string const & id, std::string const & title, std::string const & body)
{
    return "<section id=\"" + id + "\">\n<h2>" + title + "</h2>\n" + body + "</section>\n";
}

std::string paragraph(std::string const & className, std::string const & text)
{
    return "<p class=\"" + className + "\">" + text + "</p>\n";
}

std::string moreRows(std::size_t rows)
{
    if (rows <= MostRows)
        return {};
    return paragraph("more", "And " + std::to_string(rows - MostRows) +
                                 " more; <code>--report-format json</code> keeps all of them.");
}

/// A file's name without the folders.
std::string lastName(std::string const & path)
{
    return path.substr(path.rfind('/') + 1);
}

std::span<KindCount const> shownKinds(RunSummary const & summary)
{
    return {summary.kinds.data(), std::min(summary.kinds.size(), MostRows)};
}

std::string head(RunSummary const & summary, std::string const & policyOfView)
{
    return "<!DOCTYPE html>\n<html lang=\"en\">\n<head>\n<meta charset=\"utf-8\">\n"
           "<meta http-equiv=\"Content-Security-Policy\" content=\"default-src 'none'; "
           "style-src 'unsafe-inline'" +
           policyOfView +
           "\">\n"
           "<meta name=\"viewport\" content=\"width=device-width, initial-scale=1\">\n"
           "<meta name=\"color-scheme\" content=\"light dark\">\n<title>" +
           htmlText(lastName(summary.file)) + " - import report</title>\n<style>\n" + ReportStyle +
           "</style>\n</head>\n";
}

std::string card(std::string const & className, std::size_t number, std::string const & words)
{
    return "<li class=\"" + className + "\"><b>" + std::to_string(number) + "</b> " + words +
           "</li>\n";
}

std::string overview(RunSummary const & summary)
{
    std::string const status = statusName(summary.status);
    std::string words;
    if (!summary.outcome.words.empty())
        words = " " + summary.outcome.words + " (exit status " +
                std::to_string(summary.outcome.exitStatus) + ")";
    std::string result = "<header>\n" + paragraph("kind", "Import report") + "<h1>" +
                         isolated(lastName(summary.file), "file") +
                         "</h1>\n<dl>\n<dt>Status</dt><dd>" + badge(status, status) +
                         htmlText(words) + "</dd>\n<dt>File</dt><dd>" +
                         isolated(summary.file, "path") + "</dd>\n<dt>Model</dt><dd>" +
                         (summary.model.empty() ? "<span class=\"none\">without a name</span>"
                                                : isolated(summary.model, "model")) +
                         "</dd>\n</dl>\n";
    if (!summary.outcome.explanation.empty())
        result += paragraph("explanation", htmlText(summary.outcome.explanation));
    auto const & counts = summary.entryCounts;
    result += "<ul class=\"cards\">\n";
    result += card("", summary.total.held.value_or(0), "in the model");
    result += card(summary.total.failed > 0 ? "bad" : "", summary.total.failed, "failed");
    result += card(counts[Warning] > 0 ? "odd" : "", counts[Warning],
                   counts[Warning] == 1 ? "warning" : "warnings");
    result += card("", counts[Information], counts[Information] == 1 ? "note" : "notes");
    return result + "</ul>\n</header>\n";
}

/// The errors about each kind of entity.
using Losses = std::unordered_map<int, std::vector<SummaryEntry const *>>;

Losses lossesByKind(RunSummary const & summary)
{
    Losses losses;
    for (SummaryEntry const & entry : summary.entries) {
        if (entry.type == Error)
            losses[entry.kind].push_back(&entry);
    }
    return losses;
}

std::string lossRow(KindCount const & kind, std::vector<SummaryEntry const *> const & errors)
{
    std::string row = "<li>" + htmlText(kind.name) + ": <b>" + std::to_string(kind.failed) +
                      "</b> failed\n<ul class=\"rows\">\n";
    std::size_t const shown = std::min(errors.size(), MostLosses);
    for (std::size_t i = 0; i < shown; ++i)
        row += "<li>" + isolated(errors[i]->text, "text") + "</li>\n";
    if (shown < errors.size())
        row += "<li class=\"more\">and " + std::to_string(errors.size() - shown) +
               " more in the report below</li>\n";
    return row + "</ul></li>\n";
}

std::string lost(RunSummary const & summary)
{
    std::string body;
    if (summary.lostNothing())
        return section("lost", "What was lost",
                       paragraph("good", "Nothing was lost: the run completed, and the translator "
                                         "reported no failure."));
    if (summary.status == Failed)
        body += paragraph("bad", "The run failed. Anything that is missing below did not arrive.");
    if (summary.status == Cancelled)
        body += paragraph("bad", "The run was cancelled, and no model was taken over.");
    if (summary.total.failed > 0) {
        body += "<ul class=\"lost\">\n";
        Losses const losses = lossesByKind(summary);
        for (KindCount const & kind : shownKinds(summary)) {
            if (kind.failed > 0)
                body += lossRow(kind, losses.at(kind.kind));
        }
        body += "<li class=\"total\">In all: <b>" + std::to_string(summary.total.failed) +
                "</b> failed</li>\n</ul>\n";
    } else {
        body += paragraph("", "The translator reported no entity as failed.");
    }
    if (summary.logErrors > 0)
        body +=
            paragraph("odd", "The log holds " + count(summary.logErrors, "error", "errors") + ".");
    return section("lost", "What was lost", body);
}

std::string countRow(KindCount const & kind, std::string const & className)
{
    auto const number = [](unsigned value) {
        return "<td" + std::string(value == 0 ? " class=\"none\"" : "") + ">" +
               std::to_string(value) + "</td>";
    };
    std::string const held =
        kind.held ? number(*kind.held) : "<td class=\"none\" title=\"not counted\">&ndash;</td>";
    return "<tr class=\"" + className + "\"><th scope=\"row\">" + htmlText(kind.name) + "</th>" +
           held + number(kind.failed) + number(kind.reported) + "</tr>\n";
}

std::string counts(RunSummary const & summary)
{
    std::string body = "<table>\n<thead><tr><th scope=\"col\">Kind</th><th scope=\"col\">Model</th>"
                       "<th scope=\"col\">Failed</th><th scope=\"col\">Reported</th></tr></thead>\n"
                       "<tbody>\n";
    for (KindCount const & kind : shownKinds(summary))
        body += countRow(kind, kind.failed > 0 ? "bad" : "plain");
    body += countRow(summary.total, "total") + "</tbody>\n</table>\n";
    return section("counts", "Entities", body + moreRows(summary.kinds.size()));
}

std::string entries(RunSummary const & summary)
{
    if (summary.entries.empty())
        return section("entries", "Report", paragraph("none", "The translator reported nothing."));
    std::string body = "<ul class=\"rows\">\n";
    std::size_t const shown = std::min(summary.entries.size(), MostRows);
    for (std::size_t i = 0; i < shown; ++i) {
        SummaryEntry const & entry = summary.entries[i];
        std::string const type = entryTypeName(entry.type);
        std::string const shownType = type == "other" ? "type " + std::to_string(entry.type) : type;
        body += "<li>" + badge(type, shownType) + " <span class=\"about\">" +
                htmlText(kindName(entry.kind)) + "</span> " + isolated(entry.text, "text") +
                "</li>\n";
    }
    return section("entries", "Report", body + "</ul>\n" + moreRows(summary.entries.size()));
}

std::string logRow(LogLine const & line)
{
    bool const labelled =
        line.type == ILoggerPolicy::ErrorLine || line.type == ILoggerPolicy::WarningLine;
    std::string const type = logTypeName(line.type);
    std::string const label = line.type == ILoggerPolicy::ErrorLine ? "Error" : "Warning";
    return "<li class=\"" + type + (line.shown ? "" : " quiet") + "\">" +
           (labelled ? badge(type, label) + " " : "") + isolated(line.text, "text") +
           (line.shown ? "" : " <span class=\"none\">(not shown in the run)</span>") + "</li>\n";
}

std::string log(RunSummary const & summary)
{
    if (summary.log.empty())
        return section("log", "Log", paragraph("none", "The log is empty."));
    std::string body;
    int list = 0;
    std::size_t const shown = std::min(summary.log.size(), MostRows);
    for (std::size_t i = 0; i < shown; ++i) {
        LogLine const & line = summary.log[i];
        if (line.list != list) {
            body += list != 0 ? "</ul>\n" : "";
            list = line.list;
            body += "<h3>List " + std::to_string(list) + "</h3>\n<ul class=\"rows\">\n";
        }
        body += logRow(line);
    }
    return section("log", "Log", body + "</ul>\n" + moreRows(summary.log.size()));
}

std::string treeRow(ProductNode const & node)
{
    Hierarchy & hierarchy = *node.hierarchy;
    std::string const type = typeName(hierarchy);
    std::string words = type;
    if (Component * const placed = placedComponent(hierarchy))
        words += std::string(" of ") + typeName(*placed);
    std::string const units = unitsText(hierarchy);
    words += (units.empty() ? "" : ", " + units);
    std::string const name = shownName(hierarchy);
    std::string const level =
        node.level > DeepestIndent
            ? "<span class=\"level\">level " + std::to_string(node.level) + "</span> "
            : "";
    return "<li class=\"" + type + " l" + std::to_string(std::min(node.level, DeepestIndent)) +
           "\">" + level +
           (name.empty() ? "<span class=\"none\">without a name</span>" : isolated(name, "name")) +
           " <span class=\"type\">" + htmlText(words) + "</span></li>\n";
}

std::string tree(RunSummary const & summary)
{
    if (summary.tree.empty())
        return section("tree", "Product tree",
                       paragraph("none", "The model has no product structure."));
    std::string body = "<ul class=\"tree\">\n";
    std::size_t const shown = std::min(summary.tree.size(), MostRows);
    for (std::size_t i = 0; i < shown; ++i)
        body += treeRow(summary.tree[i]);
    return section("tree", "Product tree", body + "</ul>\n" + moreRows(summary.tree.size()));
}

} // namespace

void writeReportPage(RunSummary const & summary, view::Scene const & scene, view::Sink const & sink)
{
    view::ViewSection const view(scene);
    sink(head(summary, view.policy()) + "<body>\n" + overview(summary) + "<main>\n");
    view.writeSection(sink);
    sink(lost(summary) + counts(summary) + tree(summary) + entries(summary) + log(summary) +
         "</main>\n");
    view.writeScript(sink);
    sink("</body>\n</html>\n");
}

} // namespace keld
