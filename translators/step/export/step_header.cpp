#include "export/step_header.h"

#include "attribute_book.h"
#include "export/model_facts.h"

#include <APIHeaderSection_MakeHeader.hxx>
#include <Interface_HArray1OfHAsciiString.hxx>
#include <StepData_StepModel.hxx>
#include <TCollection_HAsciiString.hxx>
#include <filesystem>

namespace step {

namespace {

Handle(TCollection_HAsciiString) ascii(std::string const & text)
{
    return new TCollection_HAsciiString(text.c_str());
}

/// The texts of one name, or one empty text: a header knows no empty lists.
class HeaderTexts
{
public:
    explicit HeaderTexts(ModelFacts const & facts) : m_Texts(facts.texts(HeaderAttribute)) {}

    Handle(Interface_HArray1OfHAsciiString) all(std::string const & name) const
    {
        std::vector<std::string> found;
        for (auto const & [known, text] : m_Texts) {
            if (known == name)
                found.push_back(text);
        }
        if (found.empty())
            found.emplace_back();
        int const count = static_cast<int>(found.size());
        Handle(Interface_HArray1OfHAsciiString) result =
            new Interface_HArray1OfHAsciiString(1, count);
        for (int i = 1; i <= count; ++i)
            result->SetValue(i, ascii(found[static_cast<std::size_t>(i) - 1]));
        return result;
    }

    Handle(TCollection_HAsciiString) first(std::string const & name) const
    {
        return all(name)->Value(1);
    }

private:
    std::vector<std::pair<std::string, std::string>> m_Texts;
};

} // namespace

void setHeader(Handle(StepData_StepModel) const & file, ModelFacts const & facts,
               std::string const & path)
{
    HeaderTexts const texts(facts);
    APIHeaderSection_MakeHeader header(file);
    header.SetName(ascii(std::filesystem::path(path).filename()));
    header.SetAuthor(texts.all("author"));
    header.SetOrganization(texts.all("organization"));
    header.SetOriginatingSystem(texts.first("originating_system"));
    header.SetAuthorisation(texts.first("authorisation"));
    header.SetDescription(texts.all("description"));
    header.SetPreprocessorVersion(ascii("keld_step"));
    // The kernel puts a stop and blanks into the name of the schema.
    for (int i = 1; header.HasFs() && i <= header.NbSchemaIdentifiers(); ++i) {
        std::string name = header.SchemaIdentifiersValue(i)->ToCString();
        if (auto const stop = name.find(". {"); stop != std::string::npos)
            name.erase(stop, 1);
        header.SetSchemaIdentifiersValue(i, ascii(name));
    }
    header.Apply(file);
}

} // namespace step
