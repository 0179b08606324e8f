#include "support/leftovers.h"

#include <keld-transl/process/exec_io.h>

#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <memory>
#include <sys/stat.h>

using tests::ScopedEnvironment;
using tests::TemporaryDirectory;
using transl_tk::IExecIO;
using transl_tk::IOption;

namespace {

struct FreeOptions
{
    void operator()(IExecIO * options) const { IExecIO::destruct(options); }
};

template <class T> T contentOf(IOption const & option, int index = 0)
{
    T content{};
    option.getValue(index)->getValue(content);
    return content;
}

/// Files that no `write` has made.
class OptionsReader : public testing::Test
{
protected:
    TemporaryDirectory m_Directory;
    std::unique_ptr<IExecIO, FreeOptions> m_Options{IExecIO::create()};
    std::string m_Path = m_Directory / "vorn_transl_tk_options_42.xml";

    /// The answer of reading a file of `text`. Expects the file to go and nothing to be printed.
    bool read(std::string const & text)
    {
        std::ofstream(m_Path) << text;
        return readWhatIsThere();
    }

    bool readWhatIsThere()
    {
        testing::internal::CaptureStderr();
        bool const answer = m_Options->read("42");
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "");
        std::error_code ignored;
        EXPECT_FALSE(std::filesystem::exists(std::filesystem::symlink_status(m_Path, ignored)));
        return answer;
    }

    bool readElements(std::vector<std::string> const & elements)
    {
        std::string text = "<vorn_translator_options_file>";
        for (auto const & element : elements)
            text += "<data>" + element + "</data>";
        return read(text + "</vorn_translator_options_file>");
    }

    IOption & option(int index) { return *m_Options->getOption(index); }

private:
    ScopedEnvironment m_Environment{"TMP", m_Directory.path().string()};
};

} // namespace

TEST_F(OptionsReader, TakesElementsByTheirPlaceAlone)
{
    EXPECT_TRUE(read("<?xml version=\"1.0\"?>\n<vorn_translator_options_file>text"
                     "<x>na<y>m</y>e</x> <!-- comment --> <data attribute='1'>about</data>\n"
                     "<?instruction?><z>1</z><a> 1</a><b><![CDATA[<text>]]>&amp;</b>"
                     "</vorn_translator_options_file>"));
    ASSERT_EQ(m_Options->size(), 1);
    EXPECT_STREQ(option(0).getName(), "name");
    EXPECT_STREQ(option(0).getDescription(), "about");
    ASSERT_EQ(option(0).getNumValues(), 1);
    EXPECT_STREQ(contentOf<char *>(option(0)), "<text>&");
}

TEST_F(OptionsReader, TakesOnlyTheWordTrueAsTrue)
{
    EXPECT_TRUE(readElements(
        {"n", "d", "6", "3", "TRUE", "3", "FALSE", "3", "true", "3", "1", "3", "TRUE ", "3", ""}));
    for (int i = 0; i < 6; ++i)
        EXPECT_EQ(contentOf<bool>(option(0), i), i == 0) << i;
}

TEST_F(OptionsReader, StepsOverFloatsAndBytes)
{
    EXPECT_TRUE(readElements({"n", "d", "3", "4", "1.5", "6", "A", "2", "9"}));
    ASSERT_EQ(option(0).getNumValues(), 3);
    EXPECT_EQ(option(0).getValue(0)->getType(), 4);
    EXPECT_EQ(contentOf<float>(option(0), 0), 0.0F);
    EXPECT_EQ(option(0).getValue(1)->getType(), 6);
    EXPECT_EQ(contentOf<unsigned char>(option(0), 1), 0);
    EXPECT_EQ(contentOf<int>(option(0), 2), 9);
}

TEST_F(OptionsReader, TakesWhatBeginsAsANumber)
{
    EXPECT_TRUE(readElements({"n", "d", "4", "2", " 12x", "2", "x", "5", " 1.5x", "5", ""}));
    EXPECT_EQ(contentOf<int>(option(0), 0), 12);
    EXPECT_EQ(contentOf<int>(option(0), 1), 0);
    EXPECT_EQ(contentOf<double>(option(0), 2), 1.5);
    EXPECT_EQ(contentOf<double>(option(0), 3), 0.0);
}

TEST_F(OptionsReader, TakesTheElementBehindAnUnknownTypeAsTheNextType)
{
    EXPECT_TRUE(readElements({"n", "d", "3", "7", "2", "5", "0", "next", "about", "0"}));
    ASSERT_EQ(m_Options->size(), 2);
    ASSERT_EQ(option(0).getNumValues(), 1);
    EXPECT_EQ(contentOf<int>(option(0)), 5);
    EXPECT_STREQ(option(1).getName(), "next");
}

TEST_F(OptionsReader, CompletesAnOptionThatIsCutOff)
{
    EXPECT_TRUE(readElements({"name"}));
    EXPECT_TRUE(readElements({"n", "about"}));
    EXPECT_TRUE(readElements({"n", "d", "1", "1"}));
    ASSERT_EQ(m_Options->size(), 3);
    EXPECT_STREQ(option(0).getName(), "name");
    EXPECT_STREQ(option(0).getDescription(), "");
    EXPECT_STREQ(option(1).getDescription(), "about");
    EXPECT_EQ(option(1).getNumValues(), 0);
}

TEST_F(OptionsReader, TakesAnEmptyOrNegativeCountAsNone)
{
    EXPECT_TRUE(readElements({"n", "d", "", "m", "e", "-5", "o", "f", "x"}));
    ASSERT_EQ(m_Options->size(), 3);
    for (int i = 0; i < 3; ++i)
        EXPECT_EQ(option(i).getNumValues(), 0);
}

TEST_F(OptionsReader, EndsWithTheElementsWhateverTheCount)
{
    for (char const * count : {"2147483647", "99999999999999999999", "3"}) {
        m_Options->clear();
        EXPECT_TRUE(readElements({"n", "d", count, "2", "5", "2", "6"}));
        ASSERT_EQ(m_Options->size(), 1);
        EXPECT_EQ(option(0).getNumValues(), 2);
    }
}

TEST_F(OptionsReader, ClampsNumbersThatAreNoInt)
{
    EXPECT_TRUE(readElements({"n", "d", "2", "2", "99999999999", "2", "-99999999999999999999"}));
    EXPECT_EQ(contentOf<int>(option(0), 0), 2147483647);
    EXPECT_EQ(contentOf<int>(option(0), 1), -2147483647 - 1);
}

TEST_F(OptionsReader, AddsNothingFromARootOfAnotherName)
{
    EXPECT_TRUE(read("<other><data>n</data><data>d</data><data>0</data></other>"));
    EXPECT_TRUE(read("<vorn_translator_options_files/>"));
    EXPECT_EQ(m_Options->size(), 0);
}

TEST_F(OptionsReader, RefusesAFileThatIsMissing)
{
    EXPECT_FALSE(readWhatIsThere());
}

TEST_F(OptionsReader, RefusesAnEmptyRoot)
{
    EXPECT_FALSE(read("<vorn_translator_options_file/>"));
    EXPECT_FALSE(read("<vorn_translator_options_file></vorn_translator_options_file>"));
    EXPECT_EQ(m_Options->size(), 0);
}

TEST_F(OptionsReader, TakesARootOfBlanksAsNoOptions)
{
    EXPECT_TRUE(read("<vorn_translator_options_file> \n </vorn_translator_options_file>"));
    EXPECT_EQ(m_Options->size(), 0);
}

TEST_F(OptionsReader, RefusesWhatDoesNotParse)
{
    for (std::string const text :
         {"", " ", "text", "<", "<vorn_translator_options_file>",
          "<vorn_translator_options_file><data>n</vorn_translator_options_file>",
          "<vorn_translator_options_file><data>\x01</data></vorn_translator_options_file>",
          "<vorn_translator_options_file><data>\xFF</data></vorn_translator_options_file>",
          "<vorn_translator_options_file><data>&unknown;</data></vorn_translator_options_file>",
          "<vorn_translator_options_file><data>n</data></vorn_translator_options_file><more/>"})
        EXPECT_FALSE(read(text)) << text;
    EXPECT_FALSE(read(std::string(1000, '\0')));
    EXPECT_EQ(m_Options->size(), 0);
}

TEST_F(OptionsReader, TakesEveryFileAsUtf8)
{
    EXPECT_FALSE(read("<?xml version=\"1.0\" encoding=\"ISO-8859-1\"?>"
                      "<vorn_translator_options_file><data>\xE4</data>"
                      "</vorn_translator_options_file>"));
    EXPECT_FALSE(read("<?xml version=\"1.0\" encoding=\"EUC-JP\"?>"
                      "<vorn_translator_options_file><data>\xFF\x80</data>"
                      "</vorn_translator_options_file>"));
    EXPECT_FALSE(read(std::string("\xFF\xFE<\0a\0/\0>\0", 10)));
    EXPECT_EQ(m_Options->size(), 0);
}

TEST_F(OptionsReader, RefusesADocumentType)
{
    std::string entities = "<!DOCTYPE vorn_translator_options_file [<!ENTITY e0 \"0123456789\">";
    for (int i = 1; i < 12; ++i) {
        std::string const before = "&e" + std::to_string(i - 1) + ";";
        entities += "<!ENTITY e" + std::to_string(i) + " \"";
        for (int k = 0; k < 10; ++k)
            entities += before;
        entities += "\">";
    }
    EXPECT_FALSE(read(entities + "]><vorn_translator_options_file><data>&e11;</data>"
                                 "</vorn_translator_options_file>"));
    EXPECT_FALSE(read("<!DOCTYPE a [<!ENTITY x \"text\">]><vorn_translator_options_file>"
                      "<data>&x;</data></vorn_translator_options_file>"));
    EXPECT_FALSE(read("<!DOCTYPE a [<!ENTITY x SYSTEM \"file:///etc/passwd\">]>"
                      "<vorn_translator_options_file><data>&x;</data>"
                      "</vorn_translator_options_file>"));
    EXPECT_FALSE(read("<!DOCTYPE a SYSTEM \"http://127.0.0.1:1/a.dtd\">"
                      "<vorn_translator_options_file><data>n</data>"
                      "</vorn_translator_options_file>"));
    EXPECT_EQ(m_Options->size(), 0);
}

TEST_F(OptionsReader, RefusesDeepNesting)
{
    std::string open;
    std::string close;
    for (int i = 0; i < 100000; ++i) {
        open += "<a>";
        close += "</a>";
    }
    EXPECT_FALSE(
        read("<vorn_translator_options_file>" + open + close + "</vorn_translator_options_file>"));
}

TEST_F(OptionsReader, RefusesAHugeFile)
{
    EXPECT_FALSE(readElements({std::string(8UL * 1024 * 1024, 'x')}));
    EXPECT_EQ(m_Options->size(), 0);
}

TEST_F(OptionsReader, RemovesALinkAndDoesNotFollowIt)
{
    std::string const target = m_Directory / "target";
    std::ofstream(target) << "<vorn_translator_options_file><data>n</data>"
                             "</vorn_translator_options_file>";
    std::filesystem::create_symlink(target, m_Path);
    EXPECT_FALSE(readWhatIsThere());
    EXPECT_TRUE(std::filesystem::exists(target));
    EXPECT_EQ(m_Options->size(), 0);
}

TEST_F(OptionsReader, DoesNotWaitForAPipe)
{
    ASSERT_EQ(mkfifo(m_Path.c_str(), 0600), 0);
    EXPECT_FALSE(readWhatIsThere());
}

TEST_F(OptionsReader, RefusesADirectory)
{
    std::filesystem::create_directory(m_Path);
    EXPECT_FALSE(m_Options->read("42"));
}
