// Bytes as the content of an options file.

#include "process/options_file.h"

#include <cstdint>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const * data, std::size_t size)
{
    transl_tk::options_file::read({reinterpret_cast<char const *>(data), size});
    return 0;
}
