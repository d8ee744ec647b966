#ifndef VARNO_APPS_VARNO_COMMANDS_DESCRIPTIONTEXT_H
#define VARNO_APPS_VARNO_COMMANDS_DESCRIPTIONTEXT_H

#include "Host/ModuleDescription.h"

#include <string>

namespace varno {

/// Everything that a module tells about itself, for people.
std::string descriptionText(const ModuleDescription& description);

/// The same as a JSON object.
std::string descriptionJson(const ModuleDescription& description);

} // namespace varno

#endif
