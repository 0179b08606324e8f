#ifndef KELD_TOOLS_TRANSLATOR_END_H
#define KELD_TOOLS_TRANSLATOR_END_H

#include "translator_watch.h"

#include <keld-common/channel.h>

#include <string>

namespace keld {

// Each says in a sentence how a translator ended that gave no answer. `place` tells where it was
// then, by `BreadcrumbTrail::place`.

std::string wordsForEnding(TranslatorEnding const & ending, std::string const & place);
std::string wordsForTimeLimit(Limits const & limits, std::string const & place);

/// `peak` is in megabytes.
std::string wordsForMemoryLimit(Limits const & limits, double peak, std::string const & place);

/// Whether the translator ended by a fault of which a crash report tells more.
bool isCrash(TranslatorEnding const & ending);

} // namespace keld

#endif
