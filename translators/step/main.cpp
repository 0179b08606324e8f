// A translator for STEP, IGES and BREP files, built on Open CASCADE.
#include "export/write_file.h"
#include "import/read_file.h"

#include <keld-translator-kit/translator.h>

int main()
{
    return translator_kit::run({"keld_step", step::readFile, step::writeFile});
}
