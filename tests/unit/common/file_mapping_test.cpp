#include "unit/common/mapping_fixture.h"

#include <climits>
#include <csignal>
#include <cstdint>
#include <fcntl.h>
#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>
#include <vector>

using namespace tests;

TEST_F(FileMapping, ANewBlockHasItsSizeAndIsZeroed)
{
    void * const handle = create(1000);
    ASSERT_NE(handle, nullptr);
    EXPECT_EQ(GetLastError(), KELD_ERROR_SUCCESS);
    EXPECT_EQ(FileMappingSize(handle), 1000);
    char const * const view = map(handle, 1000);
    ASSERT_NE(view, nullptr);
    EXPECT_EQ(std::count(view, view + 1000, '\0'), 1000);
    EXPECT_NE(UnmapViewOfFile(view), 0);
    EXPECT_NE(CloseHandle(handle), 0);
}

TEST_F(FileMapping, TheObjectIsPrivateReservedAndBeginsWithTheFirstByte)
{
    mode_t const old = ::umask(0777);
    void * const handle = create(100000);
    ::umask(old);
    char * const view = map(handle);
    std::memcpy(view, "first", 5);
    struct stat status = {};
    ASSERT_EQ(::stat(path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode, mode_t(S_IFREG | 0600));
    EXPECT_EQ(status.st_size, 100000);
    EXPECT_GE(status.st_blocks * 512, 100000);
    EXPECT_EQ(contentOf(path()).substr(0, 6), std::string("first\0", 6));
    UnmapViewOfFile(view);
    CloseHandle(handle);
}

TEST_F(FileMapping, PreparingAViewChangesNoByte)
{
    void * const handle = create(20000);
    char * const view = map(handle, 20000);
    std::memset(view, 'a', 10000);
    PrepareViewOfFile(view + 5001, 14999, 0);
    PrepareViewOfFile(view + 5001, 14999, 1);
    EXPECT_EQ(std::count(view, view + 10000, 'a'), 10000);
    EXPECT_EQ(std::count(view + 10000, view + 20000, '\0'), 10000);
    UnmapViewOfFile(view);
    // A view that is gone is no fault.
    PrepareViewOfFile(view, 20000, 1);
    CloseHandle(handle);
}

TEST_F(FileMapping, AnotherProcessSeesTheBytes)
{
    void * const handle = create(5000);
    char * const view = map(handle, 5000);
    std::memset(view, 'a', 5000);
    expectWellInFork([this] {
        void * const opened = open();
        ASSERT_NE(opened, nullptr);
        EXPECT_EQ(FileMappingSize(opened), 5000);
        char * const seen = map(opened, 0);
        ASSERT_NE(seen, nullptr);
        EXPECT_EQ(std::count(seen, seen + 5000, 'a'), 5000);
        seen[4999] = 'b';
    });
    EXPECT_EQ(view[4999], 'b');
    UnmapViewOfFile(view);
    CloseHandle(handle);
}

TEST_F(FileMapping, TheNameGoesWithTheLastHandle)
{
    void * const first = create(10);
    void * const second = open();
    EXPECT_NE(first, second);
    CloseHandle(first);
    EXPECT_TRUE(hasName());
    CloseHandle(second);
    EXPECT_FALSE(hasName());
    EXPECT_EQ(open(), nullptr);
    EXPECT_EQ(GetLastError(), KELD_ERROR_FILE_NOT_FOUND);
}

TEST_F(FileMapping, AViewKeepsTheBlockAfterItsHandle)
{
    void * const handle = create(10);
    char * const view = map(handle);
    CloseHandle(handle);
    view[0] = 'a';
    void * const again = open();
    ASSERT_NE(again, nullptr);
    char * const other = map(again);
    EXPECT_EQ(other[0], 'a');
    CloseHandle(again);
    UnmapViewOfFile(view);
    EXPECT_TRUE(hasName());
    UnmapViewOfFile(other);
    EXPECT_FALSE(hasName());
}

TEST_F(FileMapping, ASecondCreatorGetsTheExistingBlock)
{
    void * const first = create(10);
    map(first)[0] = 'a';
    void * const second = create(5000);
    ASSERT_NE(second, nullptr);
    EXPECT_EQ(GetLastError(), KELD_ERROR_ALREADY_EXISTS);
    EXPECT_EQ(FileMappingSize(second), 10);
    EXPECT_EQ(map(second)[0], 'a');
    CloseHandle(first);
    CloseHandle(second);
    ReleaseFileMappings();
}

TEST_F(FileMapping, AnUnknownHandleIsRefused)
{
    void * const handle = create(10);
    CloseHandle(handle);
    int local = 0;
    for (void * unknown : {handle, static_cast<void *>(nullptr), KELD_INVALID_HANDLE_VALUE,
                           static_cast<void *>(&local)}) {
        EXPECT_EQ(CloseHandle(unknown), 0);
        EXPECT_EQ(GetLastError(), KELD_ERROR_INVALID_HANDLE);
        EXPECT_EQ(map(unknown), nullptr);
        EXPECT_EQ(GetLastError(), KELD_ERROR_INVALID_HANDLE);
        EXPECT_EQ(FileMappingSize(unknown), -1);
    }
}

TEST_F(FileMapping, AHandleIsNeverUsedAgain)
{
    std::set<void *> seen;
    for (int round = 0; round < 50; ++round) {
        void * const handle = create(10);
        EXPECT_TRUE(seen.insert(handle).second);
        CloseHandle(handle);
    }
}

TEST_F(FileMapping, AnUnknownViewIsRefused)
{
    void * const handle = create(10000);
    char * const view = map(handle);
    int local = 0;
    EXPECT_EQ(UnmapViewOfFile(nullptr), 0);
    EXPECT_EQ(UnmapViewOfFile(&local), 0);
    EXPECT_EQ(UnmapViewOfFile(view + 4096), 0);
    EXPECT_EQ(GetLastError(), KELD_ERROR_INVALID_PARAMETER);
    view[0] = 'a';
    EXPECT_NE(UnmapViewOfFile(view), 0);
    EXPECT_EQ(UnmapViewOfFile(view), 0);
    CloseHandle(handle);
}

TEST_F(FileMapping, AViewIsAtMostTheBlock)
{
    void * const handle = create(4097);
    EXPECT_EQ(map(handle, 4098), nullptr);
    EXPECT_EQ(GetLastError(), KELD_ERROR_ACCESS_DENIED);
    EXPECT_EQ(map(handle, (1LL << 32) + 1), nullptr);
    EXPECT_EQ(map(handle, ~0ULL), nullptr);
    char * const part = map(handle, 1);
    EXPECT_NE(part, nullptr);
    CloseHandle(handle);
    EXPECT_NE(UnmapViewOfFile(part), 0);
}

TEST_F(FileMapping, ASizeOfNothingIsRefused)
{
    EXPECT_EQ(CreateFileMappingA(KELD_INVALID_HANDLE_VALUE, nullptr, KELD_PAGE_READWRITE, 0, 0,
                                 m_Name.c_str()),
              nullptr);
    EXPECT_EQ(GetLastError(), KELD_ERROR_INVALID_PARAMETER);
}

TEST_F(FileMapping, OtherArgumentsAreRefused)
{
    char const * const name = m_Name.c_str();
    int local = 0;
    EXPECT_EQ(CreateFileMappingA(nullptr, nullptr, KELD_PAGE_READWRITE, 0, 1, name), nullptr);
    EXPECT_EQ(
        CreateFileMappingA(KELD_INVALID_HANDLE_VALUE, &local, KELD_PAGE_READWRITE, 0, 1, name),
        nullptr);
    EXPECT_EQ(CreateFileMappingA(KELD_INVALID_HANDLE_VALUE, nullptr, 2, 0, 1, name), nullptr);
    EXPECT_EQ(
        CreateFileMappingA(KELD_INVALID_HANDLE_VALUE, nullptr, KELD_PAGE_READWRITE, 0, 1, nullptr),
        nullptr);
    void * const handle = create(10);
    EXPECT_EQ(OpenFileMappingA(4, 0, name), nullptr);
    EXPECT_EQ(OpenFileMappingA(KELD_FILE_MAP_ALL_ACCESS, 1, name), nullptr);
    EXPECT_EQ(OpenFileMappingA(KELD_FILE_MAP_ALL_ACCESS, 0, nullptr), nullptr);
    EXPECT_EQ(MapViewOfFile(handle, 4, 0, 0, 1), nullptr);
    EXPECT_EQ(MapViewOfFile(handle, KELD_FILE_MAP_ALL_ACCESS, 1, 0, 1), nullptr);
    EXPECT_EQ(MapViewOfFile(handle, KELD_FILE_MAP_ALL_ACCESS, 0, 1, 1), nullptr);
    EXPECT_EQ(GetLastError(), KELD_ERROR_INVALID_PARAMETER);
    CloseHandle(handle);
}

TEST_F(FileMapping, ASizeBeyondTheMemoryIsAFailedCreation)
{
    EXPECT_EQ(CreateFileMappingA(KELD_INVALID_HANDLE_VALUE, nullptr, KELD_PAGE_READWRITE,
                                 0x7FFFFFFF, 0, m_Name.c_str()),
              nullptr);
    EXPECT_EQ(GetLastError(), KELD_ERROR_DISK_FULL);
    EXPECT_EQ(CreateFileMappingA(KELD_INVALID_HANDLE_VALUE, nullptr, KELD_PAGE_READWRITE,
                                 0xFFFFFFFF, 0, m_Name.c_str()),
              nullptr);
    EXPECT_EQ(GetLastError(), KELD_ERROR_DISK_FULL);
    EXPECT_FALSE(hasName());
}

TEST_F(FileMapping, ALimitOnFileSizesIsAFailedCreationAndNoSignal)
{
    expectWellInFork([this] {
        rlimit const limit = {4096, 4096};
        ::setrlimit(RLIMIT_FSIZE, &limit);
        EXPECT_EQ(create(5000), nullptr);
        EXPECT_EQ(GetLastError(), KELD_ERROR_DISK_FULL);
        EXPECT_NE(create(4096), nullptr);
        ReleaseFileMappings();
    });
}

TEST_F(FileMapping, CreationFailsWithoutDescriptors)
{
    char const * const name = m_Name.c_str();
    rlimit old = {};
    ::getrlimit(RLIMIT_NOFILE, &old);
    rlimit const none = {0, old.rlim_max};
    ::setrlimit(RLIMIT_NOFILE, &none);
    // Only the call itself: the sanitizers' checks of members need descriptors.
    void * const handle =
        CreateFileMappingA(KELD_INVALID_HANDLE_VALUE, nullptr, KELD_PAGE_READWRITE, 0, 10, name);
    unsigned int const error = GetLastError();
    ::setrlimit(RLIMIT_NOFILE, &old);
    EXPECT_EQ(handle, nullptr);
    EXPECT_EQ(error, unsigned(KELD_ERROR_NOT_ENOUGH_MEMORY));
}

TEST_F(FileMapping, EveryDescriptorIsCloseOnExec)
{
    void * const handle = create(10);
    struct stat named = {};
    ASSERT_EQ(::stat(path().c_str(), &named), 0);
    int found = 0;
    for (int descriptor = 0; descriptor < 256; ++descriptor) {
        struct stat own = {};
        if (::fstat(descriptor, &own) == -1 || own.st_ino != named.st_ino ||
            own.st_dev != named.st_dev)
            continue;
        ++found;
        EXPECT_EQ(::fcntl(descriptor, F_GETFD), FD_CLOEXEC);
    }
    EXPECT_EQ(found, 1);
    CloseHandle(handle);
}

TEST_F(FileMapping, AnyTextServesAsAName)
{
    for (std::string const & name :
         {std::string(), std::string("/"), std::string("a/b"), std::string("../a"),
          std::string("Local\\a b%c\n"), std::string("\xC3\xA4"), std::string(300, 'x'),
          std::string(5000, '/')}) {
        m_Name = name;
        void * const handle = create(10);
        ASSERT_NE(handle, nullptr) << name;
        EXPECT_EQ(GetLastError(), KELD_ERROR_SUCCESS) << name;
        EXPECT_TRUE(hasName()) << name;
        void * const opened = open();
        EXPECT_NE(opened, nullptr) << name;
        CloseHandle(opened);
        CloseHandle(handle);
        EXPECT_FALSE(hasName()) << name;
    }
}

TEST_F(FileMapping, DifferentNamesAreDifferentBlocks)
{
    std::vector<void *> handles;
    for (std::string const & name :
         {std::string("a"), std::string("A"), std::string("a "), std::string("a%20"),
          std::string(300, 'x'), std::string(301, 'x'), std::string(299, 'x') + "y"}) {
        m_Name = name;
        handles.push_back(create(10));
        EXPECT_EQ(GetLastError(), KELD_ERROR_SUCCESS) << name;
    }
    for (void * handle : handles)
        CloseHandle(handle);
}

TEST_F(FileMapping, ReleasingLetsTheNamesGoAndKeepsTheViews)
{
    void * const handle = create(10);
    char * const view = map(handle);
    ReleaseFileMappings();
    EXPECT_FALSE(hasName());
    EXPECT_EQ(CloseHandle(handle), 0);
    view[9] = 'a';
    EXPECT_EQ(view[9], 'a');
    EXPECT_NE(UnmapViewOfFile(view), 0);
}

TEST_F(FileMapping, ReleasingLeavesANameThatAnotherProcessHolds)
{
    void * const handle = create(10);
    expectWellInFork([this] {
        EXPECT_NE(open(), nullptr);
        ReleaseFileMappings();
    });
    EXPECT_TRUE(hasName());
    CloseHandle(handle);
}

TEST_F(FileMapping, TheFreeMemoryBoundsABlock)
{
    EXPECT_GT(FileMappingFree(), 1 << 20);
}
