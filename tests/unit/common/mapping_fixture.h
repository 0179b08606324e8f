#ifndef KELD_TESTS_UNIT_COMMON_MAPPING_FIXTURE_H
#define KELD_TESTS_UNIT_COMMON_MAPPING_FIXTURE_H

#include "segment_object.h"
#include "support/leftovers.h"
#include "unit/common/child.h"

#include <keld-common/file_mapping.h>

#include <algorithm>
#include <cstring>
#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <string>
#include <unistd.h>

namespace tests {

/// A test with one name of shared memory.
class FileMapping : public ::testing::Test
{
protected:
    void * create(unsigned size) const
    {
        return CreateFileMappingA(KELD_INVALID_HANDLE_VALUE, nullptr, KELD_PAGE_READWRITE, 0, size,
                                  m_Name.c_str());
    }

    void * open() const { return OpenFileMappingA(KELD_FILE_MAP_ALL_ACCESS, 0, m_Name.c_str()); }

    static char * map(void * handle, unsigned long long size = 0)
    {
        return static_cast<char *>(MapViewOfFile(handle, KELD_FILE_MAP_ALL_ACCESS, 0, 0, size));
    }

    std::string path() const { return "/dev/shm/" + keld_common::objectName(m_Name); }
    bool hasName() const { return sharedMemoryNames().contains(keld_common::objectName(m_Name)); }

private:
    LeftoverGuard m_Guard;

protected:
    std::string m_Name = "unit " + std::to_string(::getpid());
};

} // namespace tests

#endif
