#ifndef VARNO_APPS_VARNO_COMMANDS_INPUTFORMAT_H
#define VARNO_APPS_VARNO_COMMANDS_INPUTFORMAT_H

#include "AudioFile/Reader.h"
#include "Host/Module.h"

namespace varno {

/// Whether the module's effect can hear a file: in its channels and at its sample rate.
/// @throws WorkError where it cannot. Any thread.
void requireVariantFor(const Module& module, const AudioReader& reader);

} // namespace varno

#endif
