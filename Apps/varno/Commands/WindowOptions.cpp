#include "WindowOptions.h"

#include "NumberOption.h"
#include "Window/XConnection.h"

namespace varno {

WindowOptions windowOptions(const CommandLine& line, const std::string& command) {
    WindowOptions options;
    options.command = command;
    options.scale = numberOption(line, "--scale", kSmallestScale, kLargestScale);
    options.state = line.value("--state");
    options.saveState = line.value("--save-state");
    options.overwrite = line.has("--force") ? Overwrite::kReplace : Overwrite::kRefuse;
    return options;
}

} // namespace varno
