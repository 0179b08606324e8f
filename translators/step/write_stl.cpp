#include "write_file.h"

#include <keld-translator-kit/translator.h>
namespace step {
void writeStl(std::string const &, translator_kit::Run &) {}
} // namespace step
