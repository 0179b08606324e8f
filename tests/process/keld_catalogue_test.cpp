#include "catalogue/catalogue.h"
#include "process/keld_program.h"
#include "process/other_programs.h"

#include <csignal>
#include <filesystem>
#include <gmock/gmock.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

using namespace std::chrono_literals;

using keld::Catalogue;
using keld::Database;
using keld::Metadata;
using keld::Transaction;
using testing::HasSubstr;
using tests::Ended;
using tests::KeldProgram;
using tests::LeftoverGuard;
using tests::pythonSays;

constexpr int NotAllowedHere = 77;

class KeldCatalogue : public testing::Test
{
protected:
    KeldCatalogue() { m_Keld.install("kit", KELD_TEST_KIT_TRANSLATOR); }

    std::string path(std::string const & name = "a.db") const { return m_Keld.files() / name; }

    Ended store(std::string const & name, std::string const & database = "a.db")
    {
        return m_Keld.run(
            {"info", "-q", "--metadata", "--wait", "0.2", "--database", database, name + ".kit"});
    }

    Ended list(std::vector<std::string> const & arguments = {})
    {
        std::vector<std::string> words = {"catalogue", "--wait", "0.2", "a.db"};
        words.insert(words.end(), arguments.begin(), arguments.end());
        return m_Keld.run(words);
    }

    /// What python3 makes of the catalogue as JSON.
    std::string says(std::string const & expression, std::vector<std::string> arguments = {})
    {
        arguments.push_back("--json");
        return pythonSays(m_Keld.file("catalogue.json", list(arguments).out), expression);
    }

    /// Stores `count` files of metadata with one face more each, from 0 on.
    void storeFaces(int count) const
    {
        Catalogue catalogue(path(), Catalogue::Access::Write);
        for (int faces = 0; faces < count; ++faces)
            catalogue.store("/part" + std::to_string(faces), "test",
                            Metadata{{{transl_tk::Faces, faces}}, {}, ""});
    }

    /// Expects that neither storing nor listing works, for that reason.
    void expectRefused(std::string const & why)
    {
        for (Ended const & ended : {store("product"), list()}) {
            EXPECT_EQ(8, ended.code);
            EXPECT_EQ("", ended.out);
            EXPECT_EQ("keld: a.db: " + why + "\n", ended.err);
        }
    }

    void expectFiles(std::set<std::string> names) const
    {
        names.insert("installation");
        EXPECT_EQ(names, m_Keld.files().names());
    }

    LeftoverGuard const m_Guard;
    KeldProgram m_Keld;
};

// What is stored

TEST_F(KeldCatalogue, HoldsWhatWasStored)
{
    Ended const stored = store("names");
    EXPECT_EQ(0, stored.code);
    EXPECT_THAT(stored.out, HasSubstr("  hole features                 1\n"));
    expectFiles({"a.db"});

    EXPECT_EQ(path("names.kit") + " kit", says("*(d['files'][0][k] for k in ('file', "
                                               "'translator'))"));
    EXPECT_EQ("{'assemblies': 0, 'parts': 0, 'instances': 0, 'faces': 0, 'triangles': 0, "
              "'spot welds': 0, 'annotations': 0, 'hole features': 1, 'blend features': 1, "
              "'key 1234': 5}",
              says("d['files'][0]['counters']"));
    EXPECT_EQ("[{'name': 'Pocket 0', 'count': 1}, {'name': 'bell\\x07', 'count': 2}]",
              says("d['files'][0]['features']"));
    EXPECT_EQ("steel,tab\t,", says("d['files'][0]['text']"));
}

TEST_F(KeldCatalogue, IsListedByPathWithDateAndCounts)
{
    store("product");
    store("names");
    Ended const ended = list();
    EXPECT_EQ(0, ended.code);
    EXPECT_THAT(ended.out,
                testing::MatchesRegex(path("names.kit") +
                                      "\n  stored                        "
                                      "[0-9]{4}-[0-9]{2}-[0-9]{2}T[0-9:]{8}Z\n"
                                      "  translator                    kit\n"
                                      "  assemblies                    0\n(.|\n)*" +
                                      path("product.kit") +
                                      "\n(.|\n)*  general attributes            2\n2 files\n"));
}

TEST_F(KeldCatalogue, KeepsTheLastOfAFile)
{
    Catalogue(path(), Catalogue::Access::Write)
        .store(path("product.kit"), "older", Metadata{{{1, 1}}, {{"gone", 1}}, "old"});
    store("product");
    EXPECT_EQ("1 kit [] ", says("len(d['files']), *(d['files'][0][k] for k in ('translator', "
                                "'features', 'text'))"));
    EXPECT_EQ("None", says("d['files'][0]['counters'].get('key 1')"));
}

TEST_F(KeldCatalogue, HoldsNothingOfAFailedRun)
{
    EXPECT_EQ(1, store("fail-0").code);
    expectFiles({});
}

TEST_F(KeldCatalogue, HoldsTextThatMeansSomethingToAStatement)
{
    std::string const text = "'); DROP TABLE file; --";
    Catalogue(path(), Catalogue::Access::Write).store(text, text, Metadata{{}, {{text, 1}}, text});
    EXPECT_EQ("1", says("len(d['files'])"));
    EXPECT_EQ("True", says("all(d['files'][0][k] == \"" + text +
                           "\" for k in ('file', 'translator', "
                           "'text'))"));
    EXPECT_EQ(text, says("d['files'][0]['features'][0]['name']"));
}

// What is asked

TEST_F(KeldCatalogue, AnswersWhichFilesHaveSuchCounts)
{
    storeFaces(6);
    auto const files = [this](std::vector<std::string> const & conditions) {
        std::vector<std::string> words;
        for (std::string const & condition : conditions)
            words.insert(words.end(), {"--where", condition});
        return says("' '.join(f['file'][5:] for f in d['files'])", words);
    };
    EXPECT_EQ("3 4 5", files({"faces>2"}));
    EXPECT_EQ("2 3 4 5", files({"faces>=2"}));
    EXPECT_EQ("0 1", files({"faces<2"}));
    EXPECT_EQ("0 1 2", files({"faces<=2"}));
    EXPECT_EQ("2", files({"faces=2"}));
    EXPECT_EQ("0 1 3 4 5", files({"faces!=2"}));
    EXPECT_EQ("2 3", files({"faces>1", "Faces < 4"}));
    EXPECT_EQ("0 1 2 3 4 5", files({"spot-welds=0"}));
    EXPECT_EQ("", files({"triangles>0"}));
    EXPECT_EQ("5", files({"key 70>4"}));
}

TEST_F(KeldCatalogue, TakesNoOtherConditions)
{
    storeFaces(1);
    for (char const * condition :
         {"faces", "faces>", ">1", "faces>x", "faces>1x", "faces>1.5", "wings>1", "faces=>1",
          "faces>0 OR 1=1", "faces>99999999999999999999", "1=1"}) {
        Ended const ended = list({"--where", condition});
        EXPECT_EQ(2, ended.code) << condition;
        EXPECT_EQ("keld: " + std::string(condition) +
                      ": this is no condition such as \"faces>1000\".\n",
                  ended.err);
    }
}

// Databases that cannot be used

TEST_F(KeldCatalogue, IsNotThere)
{
    Ended const ended = list();
    EXPECT_EQ(8, ended.code);
    EXPECT_EQ("keld: a.db: there is no such file.\n", ended.err);
    expectFiles({});
}

TEST_F(KeldCatalogue, IsNoDatabase)
{
    m_Keld.file("a.db", "the words of a text file that is long enough for a header of a database, "
                        "which takes a hundred bytes");
    expectRefused("it is no database.");
    expectFiles({"a.db"});
}

TEST_F(KeldCatalogue, IsADirectory)
{
    std::filesystem::create_directory(path());
    expectRefused("it is a directory, no database.");
}

TEST_F(KeldCatalogue, IsAPipe)
{
    mkfifo(path().c_str(), 0600);
    expectRefused("it is no regular file.");
}

TEST_F(KeldCatalogue, IsEmpty)
{
    m_Keld.file("a.db", "");
    expectRefused("the database is no catalogue of metadata.");
    EXPECT_EQ("", tests::contentOf(path()));
}

TEST_F(KeldCatalogue, IsADatabaseOfSomethingElse)
{
    m_Keld.file("a.db", "");
    Database(path(), 0ms).run("CREATE TABLE file (id, path)");
    expectRefused("the database is no catalogue of metadata.");
}

TEST_F(KeldCatalogue, HasALaterSchema)
{
    storeFaces(1);
    Database(path(), 0ms).run("PRAGMA user_version = 2");
    expectRefused("the catalogue has schema version 2; this program knows version 1.");
}

TEST_F(KeldCatalogue, LacksATable)
{
    storeFaces(1);
    Database(path(), 0ms).run("DROP TABLE feature");
    expectRefused("the catalogue does not have the tables of its schema version.");
}

TEST_F(KeldCatalogue, LacksAColumn)
{
    storeFaces(1);
    Database(path(), 0ms).run("ALTER TABLE file RENAME COLUMN text TO words");
    expectRefused("the catalogue does not have the tables of its schema version.");
}

TEST_F(KeldCatalogue, IsDamaged)
{
    storeFaces(1);
    std::filesystem::resize_file(path(), 4096);
    expectRefused("the database is damaged.");
}

TEST_F(KeldCatalogue, IsHeldByAnotherProcess)
{
    storeFaces(1);
    Database database(path(), 0ms);
    database.run("BEGIN EXCLUSIVE");
    expectRefused("another process holds the database; gave up after 0.200 seconds.");
    database.run("ROLLBACK");
    EXPECT_EQ(0, store("product").code);
    expectFiles({"a.db"});
}

TEST_F(KeldCatalogue, IsHeldFromTheEndOfTheRunOn)
{
    storeFaces(1);
    Database database(path(), 0ms);
    Transaction const writing(database, Transaction::Kind::Write);
    Ended const ended = store("product");
    EXPECT_EQ(8, ended.code);
    EXPECT_EQ("keld: a.db: another process holds the database; gave up after 0.200 seconds.\n",
              ended.err);
    EXPECT_THAT(ended.out, HasSubstr("general attributes"))
        << "the counts are printed all the same";
    EXPECT_EQ(0, list().code) << "readers get what was there before";
}

TEST_F(KeldCatalogue, IsWriteProtected)
{
    storeFaces(1);
    std::filesystem::permissions(path(), std::filesystem::perms(0400));
    m_Keld.before(tests::obeyPermissions);
    Ended const ended = store("product");
    EXPECT_EQ(8, ended.code);
    EXPECT_EQ("keld: a.db: the database cannot be written.\n", ended.err);
    EXPECT_EQ("1", says("len(d['files'])"));
}

TEST_F(KeldCatalogue, CannotBeRead)
{
    storeFaces(1);
    std::filesystem::permissions(path(), std::filesystem::perms(0));
    m_Keld.before(tests::obeyPermissions);
    expectRefused("the database cannot be opened: Permission denied.");
}

TEST_F(KeldCatalogue, CannotBeMadeInADirectoryWithoutRights)
{
    std::filesystem::create_directory(path("closed"));
    std::filesystem::permissions(path("closed"), std::filesystem::perms(0500));
    m_Keld.before(tests::obeyPermissions);
    Ended const ended = store("product", "closed/a.db");
    EXPECT_EQ(8, ended.code);
    EXPECT_EQ("keld: closed/a.db: the database cannot be made: Permission denied.\n", ended.err);
}

TEST_F(KeldCatalogue, CannotBeMadeInAMissingDirectory)
{
    Ended const ended = store("product", "no/a.db");
    EXPECT_EQ(8, ended.code);
    EXPECT_EQ("keld: no/a.db: the database cannot be made: No such file or directory.\n",
              ended.err);
}

TEST_F(KeldCatalogue, HasNoSpaceLeft)
{
    std::filesystem::create_directory(path("small"));
    std::string const directory = path("small");
    for (char const * size : {"8k", "32k"}) { // too small for the tables, and for the rows
        m_Keld.before([directory, size] { tests::mountSmall(directory, size); });
        Ended const ended = store("many-names", "small/a.db");
        if (ended.code == NotAllowedHere)
            GTEST_SKIP() << "this machine does not allow file systems of one's own";
        EXPECT_EQ(8, ended.code) << size;
        EXPECT_THAT(ended.err,
                    HasSubstr("keld: small/a.db: there is no space left for the database.\n"));
    }
}

// All or nothing

TEST_F(KeldCatalogue, HoldsAllOrNothingWhenItCannotGrow)
{
    Metadata large;
    for (int i = 0; i < 4000; ++i)
        large.features.emplace("feature " + std::to_string(i), i);
    Catalogue(path(), Catalogue::Access::Write).store("/large", "test", large);
    auto const size = std::filesystem::file_size(path());
    m_Keld.before([size] {
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit const limit = {size, size};
        setrlimit(RLIMIT_FSIZE, &limit);
    });

    Ended const ended = store("many-names");

    EXPECT_EQ(8, ended.code);
    EXPECT_THAT(ended.err, HasSubstr("keld: a.db: the database cannot be read or written.\n"));
    m_Keld.before({});
    expectFiles({"a.db"});
    EXPECT_EQ("1 4000", says("len(d['files']), len(d['files'][0]['features'])"));
}

TEST_F(KeldCatalogue, IsNotMadeByHalvesWhenThereIsNoRoom)
{
    m_Keld.before([] {
        std::signal(SIGXFSZ, SIG_IGN);
        rlimit const limit = {8192, 8192};
        setrlimit(RLIMIT_FSIZE, &limit);
    });
    EXPECT_EQ(8, store("product").code);
    expectFiles({});
}

TEST_F(KeldCatalogue, UndoesWhatAWriterThatWasKilledHadDone)
{
    storeFaces(1);
    pid_t const writer = fork();
    if (writer == 0) {
        Database database(path(), 0ms);
        database.run("PRAGMA cache_size = 1; BEGIN;"
                     "WITH RECURSIVE n (i) AS (VALUES (1) UNION ALL SELECT i + 1 FROM n "
                     "WHERE i < 10000) INSERT INTO feature SELECT 1, 'half ' || i, i FROM n");
        raise(SIGKILL);
    }
    waitpid(writer, nullptr, 0);
    EXPECT_EQ(1U, m_Keld.files().names().count("a.db-journal")) << "nothing is there to be undone";

    EXPECT_EQ("1 0", says("len(d['files']), len(d['files'][0]['features'])"));
    expectFiles({"a.db", "catalogue.json"});
}

// Several hosts

TEST_F(KeldCatalogue, TakesEverythingOfTwoHostsAtOnce)
{
    constexpr int Files = 100;
    std::vector<pid_t> hosts;
    for (int host = 0; host < 2; ++host) {
        hosts.push_back(fork());
        if (hosts.back() != 0)
            continue;
        for (int i = 0; i < Files; ++i)
            Catalogue(path(), Catalogue::Access::Write, 60s)
                .store("/host" + std::to_string(host) + "/" + std::to_string(i), "test",
                       Metadata{{{transl_tk::Faces, i}, {1000, host}}, {{"both", i}}, "words"});
        _exit(0);
    }
    for (pid_t const host : hosts) {
        int status = 0;
        waitpid(host, &status, 0);
        EXPECT_EQ(0, status);
    }

    EXPECT_EQ("200", says("len({f['file'] for f in d['files']})"));
    EXPECT_EQ("True", says("all(f['file'] == '/host%d/%d' % (f['counters']['key 1000'], "
                           "f['counters']['faces']) and f['features'] == [{'name': 'both', "
                           "'count': f['counters']['faces']}] for f in d['files'])"));
    expectFiles({"a.db", "catalogue.json"});
}

/// Stores ten files one after the other; whether all went well.
bool isStoredByPrograms(std::string const & database)
{
    KeldProgram program;
    program.install("kit", KELD_TEST_KIT_TRANSLATOR);
    for (int i = 0; i < 10; ++i)
        EXPECT_EQ(0, program
                         .run({"info", "-q", "--metadata", "--wait", "60", "--database", database,
                               "file" + std::to_string(i) + ".kit"})
                         .code);
    return !testing::Test::HasFailure();
}

TEST_F(KeldCatalogue, TakesEverythingOfTwoProgramsAtOnce)
{
    std::vector<pid_t> users = {fork(), 0};
    if (users[0] != 0)
        users[1] = fork();
    for (pid_t const user : users)
        if (user == 0)
            _exit(isStoredByPrograms(path()) ? 0 : 1);
    for (pid_t const user : users) {
        int status = 0;
        waitpid(user, &status, 0);
        EXPECT_EQ(0, status);
    }
    EXPECT_EQ("20", says("len({f['file'] for f in d['files']})"));
    expectFiles({"a.db", "catalogue.json"});
}

// The command line

TEST_F(KeldCatalogue, CommandLinesThatAreWrong)
{
    using Words = std::vector<std::string>;
    for (Words const & words :
         {Words{"catalogue"}, Words{"info", "--database", "a.db", "product.kit"},
          Words{"info", "--metadata", "--tree", "1", "product.kit"},
          Words{"info", "--metadata", "--wait", "-1", "product.kit"},
          Words{"catalogue", "--wait", "x", "a.db"}})
        EXPECT_EQ(2, m_Keld.run(words).code) << words.back();
    expectFiles({});
}

TEST_F(KeldCatalogue, ANameWithAMeaningForTheDatabaseLibraryIsAFile)
{
    EXPECT_EQ(0, store("product", ":memory:").code);
    EXPECT_EQ(0, store("product", "file:b.db?mode=memory").code);
    expectFiles({":memory:", "file:b.db?mode=memory"});
}

} // namespace
