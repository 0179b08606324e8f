// A translator whose every file holds an empty model; with an argument, a process that does
// nothing.

#include <keld-translator-kit/translator.h>

int main(int argc, char **)
{
    if (argc > 1)
        return 0;
    auto const nothing = [](std::string const &, translator_kit::Run &) {};
    return translator_kit::run({"empty_translator", nothing, nothing});
}
