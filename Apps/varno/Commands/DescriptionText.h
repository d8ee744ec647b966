#pragma once

#include "ModuleDescription.h"

#include <string>

namespace varno {

/// Everything that a module tells about itself, for people.
std::string descriptionText(const ModuleDescription& description);

/// The same as a JSON object.
std::string descriptionJson(const ModuleDescription& description);

} // namespace varno
