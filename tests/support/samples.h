#ifndef KELD_TESTS_SUPPORT_SAMPLES_H
#define KELD_TESTS_SUPPORT_SAMPLES_H

#include <filesystem>
#include <gtest/gtest.h>
#include <string>

namespace tests {

/// The folder with files of other programs, which do not belong to the project; KELD_CAD_DATA may
/// name another. It need not be there.
std::filesystem::path sampleFolder();

/// Skips the current test, or what is left of its SetUp, and says so, where the folder is not
/// there.
void skipWithoutSamples();

/// A file's name as the name of a test.
std::string sampleTestName(testing::TestParamInfo<char const *> const & file);

} // namespace tests

#endif
