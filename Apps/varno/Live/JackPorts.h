#ifndef VARNO_APPS_VARNO_LIVE_JACKPORTS_H
#define VARNO_APPS_VARNO_LIVE_JACKPORTS_H

#include <string>
#include <utility>
#include <vector>

namespace varno {

enum class PortDirection { kInput, kOutput };

/// The fixed short name of a port, on which sessions and scripts rely: "in", "out" of one channel; "in_l",
/// "in_r", "out_l", "out_r" of two. @param channel below channels, from 0 on
std::string portName(PortDirection direction, int channels, int channel);

/// Which port of the program goes to which of the system's, both counted from 0. One capture port feeds both
/// inputs, one output goes to both of the first playback ports, further ports of the system stay free.
/// @param system how many ports it has
std::vector<std::pair<int, int>> portPairs(PortDirection direction, int channels, int system);

} // namespace varno

#endif
