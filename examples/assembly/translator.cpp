// A translator for files "*.gearbox", which say a few words about a gearbox: lines NAME=VALUE. The
// model that comes of it is the gearbox of build_gearbox.cpp with those words as product data. What
// it cannot bring across it tells the host: in the log, and as entries of the report.
#include "build_gearbox.h"

#include <keld-transl/attributes/attribute.h>
#include <keld-transl/reporting/html_logger_entry.h>
#include <keld-translator-kit/translator.h>

#include <fstream>
#include <string>

namespace {

using transl_tk::Attribute;
using transl_tk::HtmlLoggerEntry;
using translator_kit::Failure;
using translator_kit::Reason;
using translator_kit::Run;

void report(std::string const & text, HtmlLoggerEntry::EntityType kind,
            assembly::EntryMeaning meaning)
{
    HtmlLoggerEntry::create(text.c_str(), kind, static_cast<HtmlLoggerEntry::EntryType>(meaning));
}

void readLine(std::string const & line, int number, transl_tk::Assembly * gearbox, Run & run)
{
    std::string const place = "Line " + std::to_string(number) + ": ";
    std::size_t const equals = line.find('=');
    if (equals == std::string::npos || equals == 0) {
        std::string const words = place + "\"" + line + "\" is not NAME=VALUE and was passed over.";
        run.warning(words);
        report(words, HtmlLoggerEntry::Attributes, assembly::Warning);
        return;
    }
    std::string const name = line.substr(0, equals);
    if (name == "finish") {
        std::string const words = place + "a surface finish has no place in the model.";
        run.error(words);
        report(words, HtmlLoggerEntry::PMIs, assembly::Error);
        return;
    }
    Attribute * const attribute = Attribute::create(name.c_str(), Attribute::Product);
    attribute->addValue(line.substr(equals + 1).c_str());
    attribute->addEntity(gearbox);
}

void readFile(std::string const & path, Run & run)
{
    std::ifstream file(path);
    if (!file)
        throw Failure(Reason::Failed, "Cannot read " + path + ".");
    transl_tk::Assembly * const gearbox = assembly::buildGearbox();
    run.progress(50);

    std::string line;
    for (int number = 1; std::getline(file, line); ++number) {
        if (!line.empty() && line.front() != '#')
            readLine(line, number, gearbox, run);
    }
    run.message("Made a gearbox of " + std::to_string(run.model().m_Hierarchies.m_Entities.size()) +
                " nodes.");
    run.progress(100);
}

} // namespace

int main()
{
    return translator_kit::run({"keld_gearbox", readFile, nullptr});
}
