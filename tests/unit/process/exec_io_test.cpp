#include "support/captured_stream.h"
#include "support/foreign_value.h"
#include "support/leftovers.h"
#include "support/report_capture.h"
#include "support/slots.h"

#include <keld-common/files.h>
#include <keld-transl/process/exec_io.h>

#include <cmath>
#include <csignal>
#include <cstring>
#include <dlfcn.h>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <iostream>
#include <iterator>
#include <locale>
#include <memory>
#include <sys/stat.h>

using tests::CapturedStream;
using tests::ForeignValue;
using tests::ReportCapture;
using tests::ScopedEnvironment;
using tests::TemporaryDirectory;
using transl_tk::IExecIO;
using transl_tk::IOption;
using transl_tk::IValue;

namespace {

enum class TemporaryDirectories { AsUsual, None, Missing };
TemporaryDirectories temporaryDirectories = TemporaryDirectories::AsUsual;

} // namespace

// Stands before the platform library's function of this name, which can find no directory only on a
// machine that has none.
extern "C" char * get_tmp_dir(void)
{
    static auto const platform = reinterpret_cast<char * (*)()>(dlsym(RTLD_NEXT, "get_tmp_dir"));
    switch (temporaryDirectories) {
    case TemporaryDirectories::None:
        return nullptr;
    case TemporaryDirectories::Missing:
        return strdup("/nonexistent/");
    default:
        return platform();
    }
}

namespace {

struct FreeOptions
{
    void operator()(IExecIO * options) const { IExecIO::destruct(options); }
};
using OwnedOptions = std::unique_ptr<IExecIO, FreeOptions>;

std::string contentOf(std::string const & path)
{
    std::ifstream file(path);
    return {std::istreambuf_iterator<char>(file), {}};
}

template <class T> T contentOf(IOption const & option, int index = 0)
{
    T content{};
    option.getValue(index)->getValue(content);
    return content;
}

std::string const declaration = "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n";

/// The file with these elements, as the XML library indents it.
std::string fileOf(std::vector<std::string> const & elements)
{
    std::string text = declaration + "<vorn_translator_options_file>\n";
    for (auto const & element : elements)
        text += "  " + (element.empty() ? "<data/>" : "<data>" + element + "</data>") + "\n";
    return text + "</vorn_translator_options_file>\n";
}

/// Options of this process, with a temporary directory of the test's own.
class OptionsFile : public testing::Test
{
protected:
    TemporaryDirectory m_Directory;
    OwnedOptions m_Options{IExecIO::create()};
    std::string m_Id = std::to_string(getCurrentProcessId());
    std::string m_Path = m_Directory / ("vorn_transl_tk_options_" + m_Id + ".xml");

    template <class T> void add(T const & content)
    {
        m_Options->addOption(IOption::create("n", IValue::create(content), "d"));
    }

    /// The options after a trip through the file.
    OwnedOptions readBack()
    {
        EXPECT_TRUE(m_Options->write());
        OwnedOptions read(IExecIO::create());
        EXPECT_TRUE(read->read(m_Id));
        return read;
    }

    template <class T> T valueReadBack(T const & content)
    {
        add(content);
        auto const read = readBack();
        m_Options->clear();
        return contentOf<T>(*read->getOption(0));
    }

    std::string textReadBack(char const * content)
    {
        add(content);
        auto const read = readBack();
        m_Options->clear();
        return contentOf<char *>(*read->getOption(0));
    }

private:
    ScopedEnvironment m_Environment{"TMP", m_Directory.path().string()};
};

struct Messages
{
    std::string report;
    std::string errors;
};

template <class Action> Messages messagesOf(Action action)
{
    ReportCapture const report;
    CapturedStream const errors(std::cerr);
    action();
    return {report.text(), errors.text()};
}

void expectTwins(Messages const & messages, std::string const & sentence)
{
    EXPECT_EQ(messages.report, "|FILE_LOG: " + sentence + "\n");
    EXPECT_EQ(messages.errors, "    Error : " + sentence + "\n");
}

} // namespace

TEST_F(OptionsFile, PathNamesTheProcess)
{
    EXPECT_EQ(m_Options->optionsFilePath("42"), m_Directory / "vorn_transl_tk_options_42.xml");
}

TEST_F(OptionsFile, HasNoPathWithoutATemporaryDirectory)
{
    temporaryDirectories = TemporaryDirectories::None;
    EXPECT_EQ(m_Options->optionsFilePath("42"), "");
    temporaryDirectories = TemporaryDirectories::Missing;
    EXPECT_EQ(m_Options->optionsFilePath("42"), "/nonexistent/vorn_transl_tk_options_42.xml");
    temporaryDirectories = TemporaryDirectories::AsUsual;
}

TEST_F(OptionsFile, HoldsAllOptionsInOneFlatList)
{
    IOption * const option = IOption::create("first", "about");
    option->addValue(IValue::create("text"));
    option->addValue(IValue::create(-7));
    option->addValue(IValue::create(true));
    option->addValue(IValue::create(false));
    option->addValue(IValue::create(1234567.0));
    option->addValue(IValue::create(static_cast<unsigned char>('A')));
    m_Options->addOption(option);
    m_Options->addOption(IOption::create("second", ""));
    m_Options->addOption(IOption::create("", IValue::create(""), "third"));
    testing::internal::CaptureStdout();
    EXPECT_TRUE(m_Options->write());
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "");

    EXPECT_EQ(contentOf(m_Path),
              fileOf({"first", "about", "6",     "1",     "text",        "2", "-7", "3",
                      "TRUE",  "3",     "FALSE", "5",     "1.23457e+06", "6", "A",  "second",
                      "",      "0",     "",      "third", "1",           "1", ""}));
    EXPECT_EQ(m_Directory.names().size(), 1U);
    EXPECT_EQ(m_Options->size(), 3);
}

TEST_F(OptionsFile, CanBeReadByItsOwnerOnly)
{
    add(1);
    ASSERT_TRUE(m_Options->write());
    struct stat status = {};
    ASSERT_EQ(stat(m_Path.c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0600U);
}

TEST_F(OptionsFile, WritingReplacesALinkAndDoesNotFollowIt)
{
    std::string const target = m_Directory / "target";
    std::ofstream(target) << "kept";
    std::filesystem::create_symlink(target, m_Path);
    add(1);
    EXPECT_TRUE(m_Options->write());
    EXPECT_EQ(contentOf(target), "kept");
    EXPECT_FALSE(std::filesystem::is_symlink(m_Path));
}

TEST_F(OptionsFile, EscapesWhatXmlGivesAMeaningTo)
{
    m_Options->addOption(IOption::create("a<b&c", IValue::create("x>y'z\"&amp;"), "<!-- -->"));
    EXPECT_TRUE(m_Options->write());
    EXPECT_EQ(contentOf(m_Path),
              fileOf({"a&lt;b&amp;c", "&lt;!-- --&gt;", "1", "1", "x&gt;y'z\"&amp;amp;"}));
    OwnedOptions const read(IExecIO::create());
    EXPECT_TRUE(read->read(m_Id));
    EXPECT_STREQ(read->getOption(0)->getName(), "a<b&c");
    EXPECT_STREQ(read->getOption(0)->getDescription(), "<!-- -->");
    EXPECT_STREQ(contentOf<char *>(*read->getOption(0)), "x>y'z\"&amp;");
}

TEST_F(OptionsFile, BringsTextsBackUnchanged)
{
    for (char const * text :
         {"", "plain", "a<b&c", "'", "\"", "'\"<>&", "]]>", "&#65;", "%s", " ", "  both ends  ",
          "\n", "a\r\nb\tc", "\xC3\xA4\xE2\x82\xAC\xF0\x9F\x98\x80", "\xEF\xBF\xBD", "\x7F"})
        EXPECT_EQ(textReadBack(text), text);
}

TEST_F(OptionsFile, BringsIntsAndBoolsBack)
{
    EXPECT_EQ(valueReadBack(0), 0);
    EXPECT_EQ(valueReadBack(2147483647), 2147483647);
    EXPECT_EQ(valueReadBack(-2147483647 - 1), -2147483647 - 1);
    EXPECT_TRUE(valueReadBack(true));
    EXPECT_FALSE(valueReadBack(false));
}

TEST_F(OptionsFile, BringsDoublesBackToSixDigits)
{
    EXPECT_EQ(valueReadBack(0.1234567), 0.123457);
    EXPECT_EQ(valueReadBack(1234567.0), 1234570.0);
    EXPECT_EQ(valueReadBack(-0.5), -0.5);
    EXPECT_EQ(valueReadBack(1e300), 1e300);
    EXPECT_EQ(valueReadBack(1e-300), 1e-300);
    EXPECT_EQ(valueReadBack(HUGE_VAL), HUGE_VAL);
}

TEST_F(OptionsFile, LosesBytes)
{
    EXPECT_EQ(valueReadBack(static_cast<unsigned char>('A')), 0);
}

TEST_F(OptionsFile, BringsAnOptionWithoutValuesBack)
{
    m_Options->addOption(IOption::create("empty", "about"));
    auto const read = readBack();
    ASSERT_EQ(read->size(), 1);
    EXPECT_STREQ(read->getOption(0)->getName(), "empty");
    EXPECT_STREQ(read->getOption(0)->getDescription(), "about");
    EXPECT_EQ(read->getOption(0)->getNumValues(), 0);
}

TEST_F(OptionsFile, NumbersAreTheSameUnderAnyLocale)
{
    struct Grouping : std::numpunct<char>
    {
        char do_thousands_sep() const override { return '.'; }
        std::string do_grouping() const override { return "\3"; }
        char do_decimal_point() const override { return ','; }
    };
    auto const old = std::locale::global(std::locale(std::locale::classic(), new Grouping));
    IOption * const option = IOption::create("n", IValue::create(123456), "d");
    option->addValue(IValue::create(1234.5));
    m_Options->addOption(option);
    bool const isWritten = m_Options->write();
    std::string const text = contentOf(m_Path);
    OwnedOptions const read(IExecIO::create());
    bool const isRead = read->read(m_Id);
    std::locale::global(old);

    EXPECT_TRUE(isWritten);
    EXPECT_EQ(text, fileOf({"n", "d", "2", "2", "123456", "5", "1234.5"}));
    ASSERT_TRUE(isRead);
    EXPECT_EQ(contentOf<int>(*read->getOption(0), 0), 123456);
    EXPECT_EQ(contentOf<double>(*read->getOption(0), 1), 1234.5);
}

TEST_F(OptionsFile, ByteIsTheCharacterOfItsNumber)
{
    IOption * const option = IOption::create("n", "d");
    for (unsigned int number : {0U, 1U, 8U, 9U, 11U, 31U, 32U, 38U, 127U, 128U, 200U, 255U})
        option->addValue(IValue::create(static_cast<unsigned char>(number)));
    m_Options->addOption(option);
    EXPECT_TRUE(m_Options->write());
    EXPECT_EQ(contentOf(m_Path),
              fileOf({"n",     "d",  "12",   "6", "",         "6", "",         "6", "",
                      "6",     "\t", "6",    "",  "6",        "",  "6",        " ", "6",
                      "&amp;", "6",  "\x7F", "6", "\xC2\x80", "6", "\xC3\x88", "6", "\xC3\xBF"}));
    OwnedOptions const read(IExecIO::create());
    EXPECT_TRUE(read->read(m_Id));
    EXPECT_EQ(read->getOption(0)->getNumValues(), 12);
}

TEST_F(OptionsFile, ValueOfUnknownTypeIsItsTypeAlone)
{
    m_Options->addOption(IOption::create("n", new ForeignValue(7), "d"));
    EXPECT_TRUE(m_Options->write());
    EXPECT_EQ(contentOf(m_Path), fileOf({"n", "d", "1", "7"}));
    OwnedOptions const read(IExecIO::create());
    EXPECT_TRUE(read->read(m_Id));
    EXPECT_EQ(read->getOption(0)->getNumValues(), 0);
}

TEST_F(OptionsFile, WritingAFloatEndsTheProcess)
{
    add(1.5F);
    EXPECT_EXIT(m_Options->write(), testing::KilledBySignal(SIGABRT), "");
}

TEST_F(OptionsFile, IsGoneAfterReading)
{
    add(1);
    readBack();
    EXPECT_FALSE(std::filesystem::exists(m_Path));
    EXPECT_TRUE(m_Directory.names().empty());
}

TEST_F(OptionsFile, ReadingAddsToTheOptionsThatAreThere)
{
    add(1);
    add(2);
    EXPECT_TRUE(m_Options->write());
    EXPECT_TRUE(m_Options->read(m_Id));
    ASSERT_EQ(m_Options->size(), 4);
    for (int i = 0; i < 4; ++i)
        EXPECT_EQ(contentOf<int>(*m_Options->getOption(i)), 1 + i % 2);
}

TEST_F(OptionsFile, OfNoOptionsHasAnEmptyRootAndIsNotRead)
{
    EXPECT_TRUE(m_Options->write());
    EXPECT_EQ(contentOf(m_Path), declaration + "<vorn_translator_options_file/>\n");
    EXPECT_FALSE(m_Options->read(m_Id));
    EXPECT_FALSE(std::filesystem::exists(m_Path));
}

TEST_F(OptionsFile, SaysNothingWhenAllIsWell)
{
    add(1);
    auto const messages = messagesOf([&] { readBack(); });
    EXPECT_EQ(messages.report + messages.errors, "");
}

TEST_F(OptionsFile, LeavesTheProcessAsItWas)
{
    tests::LeftoverGuard const guard;
    add(1);
    readBack();
    EXPECT_FALSE(m_Options->read(m_Id));
}

TEST_F(OptionsFile, CannotBeWrittenIntoADirectoryThatIsMissing)
{
    temporaryDirectories = TemporaryDirectories::Missing;
    add(1);
    auto const messages = messagesOf([&] { EXPECT_FALSE(m_Options->write()); });
    temporaryDirectories = TemporaryDirectories::AsUsual;
    expectTwins(messages, "Cannot write option xml file in: "
                          "/nonexistent/vorn_transl_tk_options_" +
                              m_Id + ".xml");
}

TEST_F(OptionsFile, CannotBeWrittenWithoutATemporaryDirectory)
{
    temporaryDirectories = TemporaryDirectories::None;
    add(1);
    auto const messages = messagesOf([&] { EXPECT_FALSE(m_Options->write()); });
    temporaryDirectories = TemporaryDirectories::AsUsual;
    expectTwins(messages, "Cannot write option xml file to any candidate directory");
}

TEST_F(OptionsFile, CannotBeReadWithoutATemporaryDirectory)
{
    temporaryDirectories = TemporaryDirectories::None;
    auto const messages = messagesOf([&] { EXPECT_FALSE(m_Options->read("42")); });
    temporaryDirectories = TemporaryDirectories::AsUsual;
    expectTwins(messages, "Cannot access any candidate temp directory to write options");
}

TEST_F(OptionsFile, CannotBeWrittenOverADirectory)
{
    std::filesystem::create_directories(m_Path + "/below");
    add(1);
    auto const messages = messagesOf([&] { EXPECT_FALSE(m_Options->write()); });
    expectTwins(messages, "Cannot write option xml file in: " + m_Path);
}

TEST_F(OptionsFile, IsNotWrittenWithATextThatXmlCannotHold)
{
    for (char const * text :
         {"\x01", "a\x1F", "\xC3", "\xC3(", "\xC0\x80", "\xE0\x80\x80", "\xED\xA0\x80",
          "\xEF\xBF\xBE", "\xF4\x90\x80\x80", "\xF8", "\x80", "\xFF", "\xF0\x9F\x98"}) {
        m_Options->clear();
        add("good");
        add(text);
        auto const messages = messagesOf([&] { EXPECT_FALSE(m_Options->write()) << text; });
        expectTwins(messages,
                    "Cannot write option xml file, XML cannot hold a text of option 2: n");
        EXPECT_TRUE(m_Directory.names().empty());
    }
}

TEST_F(OptionsFile, IsNotWrittenWithANameOrDescriptionThatXmlCannotHold)
{
    m_Options->addOption(IOption::create("a\x01\xFF\nb", "d"));
    expectTwins(messagesOf([&] { EXPECT_FALSE(m_Options->write()); }),
                "Cannot write option xml file, XML cannot hold a text of option 1: a???b");
    m_Options->clear();
    m_Options->addOption(IOption::create("n", "\x02"));
    expectTwins(messagesOf([&] { EXPECT_FALSE(m_Options->write()); }),
                "Cannot write option xml file, XML cannot hold a text of option 1: n");
}

TEST_F(OptionsFile, LargerThanTheLimitIsNotLeft)
{
    add(std::string(8UL * 1024 * 1024 - 300, 'x').c_str());
    EXPECT_TRUE(m_Options->write());
    EXPECT_TRUE(OwnedOptions(IExecIO::create())->read(m_Id));
    m_Options->clear();
    add(std::string(8UL * 1024 * 1024, 'x').c_str());
    expectTwins(messagesOf([&] { EXPECT_FALSE(m_Options->write()); }),
                "Cannot write option xml file in: " + m_Path);
    EXPECT_TRUE(m_Directory.names().empty());
}

TEST(Options, AreKeptInOrderAndFreedTogether)
{
    OwnedOptions const options(IExecIO::create());
    EXPECT_EQ(options->size(), 0);
    std::vector<int> freed;
    IOption * const first = IOption::create("1", new ForeignValue(11, &freed), "");
    IOption * const second = IOption::create("2", new ForeignValue(12, &freed), "");
    options->addOption(first);
    options->addOption(nullptr);
    options->addOption(second);
    ASSERT_EQ(options->size(), 2);
    EXPECT_EQ(options->getOption(0), first);
    EXPECT_EQ(options->getOption(1), second);
    options->clear();
    EXPECT_EQ(options->size(), 0);
    EXPECT_EQ(freed, (std::vector{11, 12}));
    options->clear();
}

TEST(Options, AreFreedWithTheirHolder)
{
    std::vector<int> freed;
    IExecIO * const options = IExecIO::create();
    options->addOption(IOption::create("1", new ForeignValue(11, &freed), ""));
    IExecIO::destruct(options);
    EXPECT_EQ(freed, std::vector{11});
    IExecIO::destruct(nullptr);
}

TEST(Options, OperationsStandInTableOrderBehindTheDestructor)
{
    using tests::slotOf;
    EXPECT_EQ(slotOf(&IExecIO::addOption), 2U);
    EXPECT_EQ(slotOf(&IExecIO::optionsFilePath), 3U);
    EXPECT_EQ(slotOf(&IExecIO::read), 4U);
    EXPECT_EQ(slotOf(&IExecIO::write), 5U);
    EXPECT_EQ(slotOf(&IExecIO::size), 6U);
    EXPECT_EQ(slotOf(&IExecIO::getOption), 7U);
    EXPECT_EQ(slotOf(&IExecIO::clear), 8U);
}
