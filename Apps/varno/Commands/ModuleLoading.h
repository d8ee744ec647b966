#pragma once

#include "CommandLine.h"
#include "Module.h"

#include <memory>

namespace varno {

/// Loads the module that a command line asks for, with --module, the environment, or by default.
/// @throws WorkError where it is missing or damaged
std::shared_ptr<Module> loadModule(const CommandLine& line);

/// Ends the use of a module and warns on standard error if it has broken a contract with its host.
/// @param module the last one that holds it
void unloadModule(std::shared_ptr<Module> module);

} // namespace varno
