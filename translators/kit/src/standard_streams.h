#ifndef KELD_TRANSLATOR_KIT_STANDARD_STREAMS_H
#define KELD_TRANSLATOR_KIT_STANDARD_STREAMS_H

namespace translator_kit {

/// Points standard output at standard error, so that no library prints between the words of the
/// host. Of the three standard descriptors those that are closed become /dev/null: no file is ever
/// opened under a number that libraries print to.
void keepStandardOutputFree();

} // namespace translator_kit

#endif
