#include "support/samples.h"

#include <cctype>
#include <cstdlib>

namespace tests {

std::filesystem::path sampleFolder()
{
    char const * const folder = std::getenv("KELD_CAD_DATA");
    return folder ? folder : KELD_TEST_SAMPLES;
}

void skipWithoutSamples()
{
    if (!std::filesystem::is_directory(sampleFolder()))
        GTEST_SKIP() << "There is no folder " << sampleFolder()
                     << " with files of other programs; KELD_CAD_DATA may name one.";
}

std::string sampleTestName(testing::TestParamInfo<char const *> const & file)
{
    std::string name = file.param;
    for (char & letter : name) {
        if (std::isalnum(static_cast<unsigned char>(letter)) == 0)
            letter = '_';
    }
    return name;
}

} // namespace tests
