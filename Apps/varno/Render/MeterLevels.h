#ifndef VARNO_APPS_VARNO_RENDER_METERLEVELS_H
#define VARNO_APPS_VARNO_RENDER_METERLEVELS_H

#include "Host/Instance.h"

#include <optional>
#include <span>

namespace varno {

/// The largest gain reduction that meters show, dB; nothing where none of them shows one. [any]
/// @param instance whose meters they are @param meters a value for each, in its order
std::optional<double> reductionDB(const Instance& instance, std::span<const float> meters);

} // namespace varno

#endif
