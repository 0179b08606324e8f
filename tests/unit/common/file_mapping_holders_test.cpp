#include "unit/common/mapping_fixture.h"

#include <csignal>
#include <cstdlib>
#include <fcntl.h>
#include <filesystem>
#include <fstream>
#include <sched.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <thread>
#include <vector>

using namespace tests;
using keld_common::objectName;

namespace {

/// Gives this process a /dev/shm of one megabyte. Answers false where that is not allowed.
bool enterSmallSharedMemory()
{
    return ::unshare(CLONE_NEWNS) == 0 &&
           ::mount("none", "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 &&
           ::mount("tmpfs", "/dev/shm", "tmpfs", 0, "size=1m") == 0;
}

constexpr int s_Skipped = 77;

} // namespace

TEST(ObjectName, KeepsPlainCharactersAndEscapesTheRest)
{
    EXPECT_EQ(objectName("Az09._-"), "keld-Az09._-");
    EXPECT_EQ(objectName("a b/%\n\xC3\xA4"), "keld-a%20b%2F%25%0A%C3%A4");
    EXPECT_EQ(objectName(""), "keld-");
}

TEST(ObjectName, CutsALongNameToTheLimitAndKeepsItDifferent)
{
    EXPECT_EQ(objectName(std::string(250, 'a')), "keld-" + std::string(250, 'a'));
    std::string const cut = objectName(std::string(251, 'a'));
    EXPECT_EQ(cut.size(), 255U);
    EXPECT_EQ(cut.substr(0, 223), "keld-" + std::string(216, 'a') + "%-");
    EXPECT_NE(cut, objectName(std::string(252, 'a')));
    EXPECT_NE(cut, objectName(std::string(250, 'a') + "b"));
    EXPECT_EQ(objectName(std::string(100, '/')).size(), 255U);
}

TEST_F(FileMapping, ANameOfAKilledCreatorIsFree)
{
    int const status = statusOfFork([this] {
        EXPECT_NE(map(create(10)), nullptr);
        ::raise(SIGKILL);
    });
    EXPECT_EQ(WTERMSIG(status), SIGKILL);
    void * const handle = create(20);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(GetLastError(), KELD_ERROR_SUCCESS);
    EXPECT_EQ(FileMappingSize(handle), 20);
    CloseHandle(handle);
    EXPECT_FALSE(hasName());
}

TEST_F(FileMapping, ABlockOfAKilledCreatorCannotBeOpened)
{
    statusOfFork([this] {
        create(10);
        ::raise(SIGKILL);
    });
    EXPECT_EQ(open(), nullptr);
    EXPECT_EQ(GetLastError(), KELD_ERROR_FILE_NOT_FOUND);
    EXPECT_FALSE(hasName());
}

TEST_F(FileMapping, ACreationOfAnyNameRemovesTheDead)
{
    statusOfFork([this] {
        create(10);
        ::raise(SIGKILL);
    });
    std::string const dead = objectName(m_Name);
    m_Name += " other";
    void * const handle = create(10);
    EXPECT_FALSE(sharedMemoryNames().contains(dead));
    EXPECT_TRUE(hasName());
    void * const second = create(10);
    EXPECT_EQ(GetLastError(), KELD_ERROR_ALREADY_EXISTS) << "the living stay";
    CloseHandle(second);
    CloseHandle(handle);
}

TEST_F(FileMapping, AReaderKeepsTheBlockOfAKilledCreator)
{
    int ready[2];
    ASSERT_EQ(::pipe(ready), 0);
    pid_t const creator = ::fork();
    if (creator == 0) {
        map(create(10))[0] = 'a';
        (void)!::write(ready[1], "x", 1);
        ::pause();
    }
    char byte = 0;
    ASSERT_EQ(::read(ready[0], &byte, 1), 1);
    void * const handle = open();
    ::kill(creator, SIGKILL);
    ::waitpid(creator, nullptr, 0);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(map(handle)[0], 'a');
    void * const second = create(10);
    EXPECT_EQ(GetLastError(), KELD_ERROR_ALREADY_EXISTS);
    CloseHandle(second);
    CloseHandle(handle);
    ReleaseFileMappings();
    EXPECT_FALSE(hasName());
    ::close(ready[0]);
    ::close(ready[1]);
}

KELD_CHILD(exitsWithABlock)
{
    void * const handle =
        CreateFileMappingA(KELD_INVALID_HANDLE_VALUE, nullptr, KELD_PAGE_READWRITE, 0, 10, argv[0]);
    bool const mapped = MapViewOfFile(handle, KELD_FILE_MAP_ALL_ACCESS, 0, 0, 10) != nullptr;
    std::exit(mapped && sharedMemoryNames().contains(objectName(argv[0])) ? 0 : 1);
}

TEST_F(FileMapping, ARegularExitLetsTheNameGo)
{
    std::string const command = childCommand("exitsWithABlock") + " " + shellQuoted(m_Name);
    int const status = std::system(command.c_str());
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_FALSE(hasName());
}

TEST_F(FileMapping, AForkedChildDoesNotTakeTheNameOfItsParent)
{
    void * const handle = create(10);
    expectWellInFork([this, handle] {
        EXPECT_NE(CloseHandle(handle), 0);
        EXPECT_TRUE(hasName());
    });
    EXPECT_TRUE(hasName());
    expectWellInFork([this] {
        void * const second = create(10);
        EXPECT_EQ(GetLastError(), KELD_ERROR_ALREADY_EXISTS);
        CloseHandle(second);
    });
    CloseHandle(handle);
    EXPECT_FALSE(hasName());
}

TEST_F(FileMapping, AFullSharedMemoryIsAFailedCreation)
{
    int const status = statusOfFork([this] {
        if (!enterSmallSharedMemory())
            ::_exit(s_Skipped);
        EXPECT_EQ(FileMappingFree(), 1 << 20);
        EXPECT_EQ(create((1 << 20) + 1), nullptr);
        EXPECT_EQ(GetLastError(), KELD_ERROR_DISK_FULL);
        EXPECT_TRUE(sharedMemoryNames().empty());
        EXPECT_EQ(FileMappingFree(), 1 << 20);

        void * const handle = create(1 << 20);
        ASSERT_NE(handle, nullptr);
        EXPECT_EQ(FileMappingFree(), 0);
        std::memset(map(handle), 1, 1 << 20);
        m_Name += " second";
        EXPECT_EQ(create(1), nullptr);
        EXPECT_EQ(GetLastError(), KELD_ERROR_DISK_FULL);
        EXPECT_EQ(sharedMemoryNames().size(), 1U);
    });
    if (WIFEXITED(status) && WEXITSTATUS(status) == s_Skipped)
        GTEST_SKIP() << "a small /dev/shm takes the right to mount";
    EXPECT_EQ(status, 0);
}

TEST_F(FileMapping, SomethingElseUnderTheNameIsRefused)
{
    int const status = statusOfFork([this] {
        if (!enterSmallSharedMemory())
            ::_exit(s_Skipped);
        TemporaryDirectory const directory;
        std::ofstream(directory / "target") << "target";
        std::filesystem::create_symlink(directory / "target", path());
        EXPECT_EQ(create(10), nullptr);
        EXPECT_EQ(GetLastError(), KELD_ERROR_ACCESS_DENIED);
        EXPECT_EQ(open(), nullptr);
        EXPECT_EQ(contentOf(directory / "target"), "target");
        std::filesystem::remove(path());

        ASSERT_EQ(::mkfifo(path().c_str(), 0600), 0);
        EXPECT_EQ(create(10), nullptr);
        EXPECT_EQ(open(), nullptr);
        EXPECT_EQ(GetLastError(), KELD_ERROR_ACCESS_DENIED);
        EXPECT_TRUE(hasName());
        std::filesystem::remove(path());

        std::ofstream(path()) << "of another user";
        if (::chown(path().c_str(), 12345, 12345) == 0) {
            EXPECT_EQ(create(10), nullptr);
            EXPECT_EQ(GetLastError(), KELD_ERROR_ACCESS_DENIED);
            EXPECT_TRUE(hasName());
        }
    });
    if (WIFEXITED(status) && WEXITSTATUS(status) == s_Skipped)
        GTEST_SKIP() << "a private /dev/shm takes the right to mount";
    EXPECT_EQ(status, 0);
}

TEST_F(FileMapping, AStoppedRemoverMakesTheCallsFailAndNotHang)
{
    void * const handle = create(10);
    int const stranger = ::open(path().c_str(), O_RDWR | O_CLOEXEC);
    ReleaseFileMappings();
    (void)handle;
    EXPECT_FALSE(hasName());
    // A leftover that somebody has locked for himself and then does nothing about.
    int const locked = ::open(path().c_str(), O_RDWR | O_CREAT | O_CLOEXEC, 0600);
    ASSERT_EQ(::flock(locked, LOCK_EX), 0);
    EXPECT_EQ(open(), nullptr);
    EXPECT_EQ(GetLastError(), KELD_ERROR_ACCESS_DENIED);
    ::close(stranger);
    ::close(locked);
    EXPECT_EQ(open(), nullptr);
    EXPECT_EQ(GetLastError(), KELD_ERROR_FILE_NOT_FOUND);
}

TEST_F(FileMapping, CreatorsAndKilledHoldersNeverShareABlockByMistake)
{
    // Each process creates, writes its mark when the block is new, and checks that nobody else
    // does; one in three dies without letting go.
    constexpr int processes = 4;
    constexpr int rounds = 30;
    std::vector<pid_t> children;
    for (int process = 0; process < processes; ++process) {
        pid_t const child = ::fork();
        if (child != 0) {
            children.push_back(child);
            continue;
        }
        bool good = true;
        for (int round = 0; round < rounds && good; ++round) {
            pid_t const worker = ::fork();
            if (worker == 0) {
                void * const handle = create(4096);
                bool const isNew = GetLastError() == KELD_ERROR_SUCCESS;
                char * const view = map(handle);
                bool sound = view != nullptr && FileMappingSize(handle) == 4096;
                if (sound && isNew) {
                    sound = view[0] == 0;
                    view[0] = 1;
                    ::sched_yield();
                    // As long as this process holds the block, its name leads to it.
                    void * const again = open();
                    char const * const other = again == nullptr ? nullptr : map(again);
                    sound = sound && other != nullptr && other[0] == 1;
                }
                if (round % 3 != 0)
                    ReleaseFileMappings();
                ::_exit(sound ? 0 : 1);
            }
            int status = 0;
            ::waitpid(worker, &status, 0);
            good = status == 0;
        }
        ::_exit(good ? 0 : 1);
    }
    for (pid_t child : children) {
        int status = 0;
        ::waitpid(child, &status, 0);
        EXPECT_EQ(status, 0);
    }
    CloseHandle(create(10));
    EXPECT_FALSE(hasName());
}

TEST_F(FileMapping, ThreadsHaveErrorsOfTheirOwn)
{
    EXPECT_EQ(CloseHandle(nullptr), 0);
    std::thread([] { EXPECT_EQ(GetLastError(), KELD_ERROR_SUCCESS); }).join();
    EXPECT_EQ(GetLastError(), KELD_ERROR_INVALID_HANDLE);
}

TEST_F(FileMapping, WhoeverHoldsABlockHoldsTheOneOfThatName)
{
    // The threads become holders and last holders of one name in any order. Two handles of the same
    // thread must lead to the same bytes; each thread marks a place of its own.
    auto const work = [this](size_t place) {
        for (int round = 0; round < 1500; ++round) {
            void * const first = create(100);
            void * const second = open();
            char * const written = map(first);
            char * const seen = map(second);
            bool sound = written != nullptr && seen != nullptr;
            if (sound) {
                written[place] = static_cast<char>(round % 100 + 1);
                sound = seen[place] == written[place];
            }
            CloseHandle(first);
            CloseHandle(second);
            UnmapViewOfFile(written);
            UnmapViewOfFile(seen);
            ASSERT_TRUE(sound) << "round " << round;
        }
    };
    std::vector<std::thread> threads;
    for (size_t place = 0; place < 4; ++place)
        threads.emplace_back(work, place);
    for (std::thread & thread : threads)
        thread.join();
    EXPECT_FALSE(hasName());
}
