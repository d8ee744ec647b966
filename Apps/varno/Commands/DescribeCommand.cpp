#include "CommandError.h"
#include "Commands.h"
#include "Console.h"
#include "DescriptionText.h"
#include "ModuleLoading.h"

namespace varno {

int runDescribe(const CommandLine& line) {
    auto module = loadModule(line);
    const auto& description = module->description();
    printOut(line.has("--json") ? descriptionJson(description) : descriptionText(description));
    unloadModule(std::move(module));
    return kExitSuccess;
}

} // namespace varno
