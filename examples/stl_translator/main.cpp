// A translator for STL files, binary and ASCII: triangles without anything else.
#include "stl_file.h"

#include <keld-translator-kit/translator.h>

int main()
{
    return translator_kit::run({"keld_stl", stl::readStl, stl::writeStl});
}
