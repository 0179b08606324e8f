#include "metadata_output.h"

#include "report_json.h"
#include "safe_text.h"

#include <cstdio>
#include <nlohmann/json.hpp>

namespace keld {

using nlohmann::ordered_json;

namespace {

constexpr int FormatVersion = 1;

void printLine(char const * name, std::string const & value)
{
    std::printf("  %-30s%s\n", name, value.c_str());
}

ordered_json countersJson(Metadata const & metadata)
{
    ordered_json counters = ordered_json::object();
    for (auto const & [name, number] : namedCounters(metadata))
        counters[name] = number;
    return counters;
}

ordered_json featuresJson(Metadata const & metadata)
{
    ordered_json features = ordered_json::array();
    for (auto const & [name, count] : metadata.features)
        features.push_back({{"name", name}, {"count", count}});
    return features;
}

ordered_json entryJson(CatalogueEntry const & entry)
{
    return {{"file", entry.path},
            {"translator", entry.translator},
            {"storedAt", entry.storedAt},
            {"counters", countersJson(entry.metadata)},
            {"features", featuresJson(entry.metadata)},
            {"text", entry.metadata.text}};
}

} // namespace

void printMetadata(Metadata const & metadata)
{
    for (auto const & [name, number] : namedCounters(metadata))
        printLine(name.c_str(), std::to_string(number));
    if (!metadata.features.empty())
        std::puts("  features");
    for (auto const & [name, count] : metadata.features)
        std::printf("    %-28s%d\n", terminalText(name).c_str(), count);
    if (!metadata.text.empty())
        printLine("text", terminalText(metadata.text));
}

void writeMetadataJson(std::string const & file, RunOutcome const & outcome,
                       Metadata const & metadata, transl_tk::SubPool & model, JsonOutput & output)
{
    output.member("format", "keld metadata");
    output.member("version", FormatVersion);
    output.member("file", file);
    output.member("status", statusJson(outcome));
    output.member("counters", countersJson(metadata));
    output.member("features", featuresJson(metadata));
    output.member("text", metadata.text);
    writeLogJson(logLines(model), output);
    output.end();
}

void printCatalogue(std::vector<CatalogueEntry> const & entries)
{
    for (CatalogueEntry const & entry : entries) {
        std::puts(terminalText(entry.path).c_str());
        printLine("stored", terminalText(entry.storedAt));
        printLine("translator", terminalText(entry.translator));
        printMetadata(entry.metadata);
    }
    std::printf("%zu %s\n", entries.size(), entries.size() == 1 ? "file" : "files");
}

void writeCatalogueJson(std::vector<CatalogueEntry> const & entries, JsonOutput & output)
{
    output.member("format", "keld catalogue");
    output.member("version", FormatVersion);
    output.beginArray("files");
    for (CatalogueEntry const & entry : entries)
        output.element(entryJson(entry));
    output.endArray();
    output.end();
}

} // namespace keld
