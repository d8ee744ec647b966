#ifndef VARNO_APPS_VARNO_GAINREDUCTIONSCALE_H
#define VARNO_APPS_VARNO_GAINREDUCTIONSCALE_H

namespace varno {

/// What the effect's gain reduction meters mean by 1.0.
inline constexpr double kGainReductionFullScaleDB = 32.0;

} // namespace varno

#endif
