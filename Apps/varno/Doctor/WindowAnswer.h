#ifndef VARNO_APPS_VARNO_DOCTOR_WINDOWANSWER_H
#define VARNO_APPS_VARNO_DOCTOR_WINDOWANSWER_H

#include "Doctor/Finding.h"

#include <chrono>
#include <filesystem>
#include <vector>

namespace varno {

/// What varno-window has found of the display and the sound systems, and of itself: whether it starts and
/// answers. Its libraries may wait for servers that do not answer, so that it is ended after a time. [main]
/// @param program varno-window
/// @throws WorkError where the system makes no process
std::vector<Finding> askWindowProgram(const std::filesystem::path& program,
                                      std::chrono::milliseconds patience);

/// The same for the program that came with this one. [main]
std::vector<Finding> askWindowProgram();

} // namespace varno

#endif
