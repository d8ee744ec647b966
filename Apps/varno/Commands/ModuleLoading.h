#ifndef VARNO_APPS_VARNO_COMMANDS_MODULELOADING_H
#define VARNO_APPS_VARNO_COMMANDS_MODULELOADING_H

#include "CommandLine.h"
#include "Host/Module.h"

#include <filesystem>
#include <memory>

namespace varno {

/// The bundle that a command line asks for, with --module, the environment, or by default; whether there is
/// one is not looked at where it is named. @throws WorkError where none is named and none came with the
/// program
std::filesystem::path moduleBundle(const CommandLine& line);

/// Loads the module that a command line asks for, with --module, the environment, or by default.
/// @throws WorkError where it is missing or damaged
std::shared_ptr<Module> loadModule(const CommandLine& line);

/// Ends the use of a module and warns on standard error if it has broken a contract with its host.
/// @param module the last one that holds it
void unloadModule(std::shared_ptr<Module> module);

} // namespace varno

#endif
