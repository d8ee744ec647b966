/// Which instances of a call the routine may process side by side.
#ifndef VARNO_SOURCE_ALG_DEMOGAIN_NEIGHBOURS_H
#define VARNO_SOURCE_ALG_DEMOGAIN_NEIGHBOURS_H

#include "DemoGain_Alg.h"

#include <cstddef>

/// How many instances from `begin` on can be processed side by side with the result of one after the other,
/// up to `most`: 1 or more. Their buffers are equally long and their filters equal, and no memory that one of
/// them writes (output, taps, state) is read or written by another. Instances of one context, or of the same
/// state, are therefore no neighbours; a shared input is no obstacle. `begin` is not `end`, its buffer has 1
/// frame or more. [audio]
std::size_t DemoGain_CountNeighbours(std::size_t channels, SDemoGain_Alg_Context* const* begin,
                                     SDemoGain_Alg_Context* const* end, std::size_t most);

#endif
