// A translator for STEP, IGES and BREP files, built on Open CASCADE.
#include "read_file.h"
#include "write_file.h"

#include <keld-translator-kit/translator.h>

int main()
{
    return translator_kit::run({"keld_step", step::readFile, step::writeFile});
}
