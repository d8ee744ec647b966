#ifndef VARNO_APPS_VARNO_RENDER_MIDSIDE_H
#define VARNO_APPS_VARNO_RENDER_MIDSIDE_H

namespace varno {

/// Replaces left and right by mid, half their sum, and side, half their difference. A sample that is
/// not usable (isUsableSample) counts as 0, so that it has no effect on the other channel. [any]
void toMidSide(float* left, float* right, int frames);

/// The reverse: left is the sum of mid and side, right their difference. [any]
void toLeftRight(float* mid, float* side, int frames);

} // namespace varno

#endif
