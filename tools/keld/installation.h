#ifndef KELD_TOOLS_INSTALLATION_H
#define KELD_TOOLS_INSTALLATION_H

#include <string>

namespace keld {

/// Makes the installation that this program lies in the one where translators are looked for,
/// unless VORN_EXEC_DIR names another.
void chooseInstallation();

/// The directory of that installation where the translators lie.
std::string translatorDirectory();

} // namespace keld

#endif
