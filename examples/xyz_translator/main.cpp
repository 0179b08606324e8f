// A translator for plain point files: one point a line, three numbers separated by blanks, tabs,
// commas or semicolons; lines that begin with # and empty lines are passed over.
#include "xyz_file.h"

#include <keld-translator-kit/translator.h>

int main()
{
    return translator_kit::run({"keld_xyz", xyz::readPoints, xyz::writePoints});
}
