/// A small module for tests of the host, written against the interfaces alone.
#ifndef VARNO_TESTS_HOST_FIXTUREMODULE_H
#define VARNO_TESTS_HOST_FIXTUREMODULE_H

#include "AAX_IACFHostServices.h"
#include "Host/Module.h"

namespace varno::fixture {

inline constexpr std::uint64_t kSDKVersion = 0x0123456789ABCDEFULL;
inline constexpr const char* kEffectID = "org.example.fixture.gain";
inline constexpr AAX_CTypeID kManufacturerID = AAX_FourCC("Fixt");
inline constexpr AAX_CTypeID kProductID = AAX_FourCC("Gain");
inline constexpr AAX_CTypeID kMonoID = AAX_FourCC("FxGm");
inline constexpr AAX_CTypeID kStereoID = AAX_FourCC("FxGs");
inline constexpr AAX_CTypeID kStereoTiID = AAX_FourCC("FxTs");

/// The module's table of entry points.
ModuleEntryPoints entryPoints();
/// The host's services between startup and shutdown, else null.
AAX_IACFHostServices_V3* services();
/// Releases the property map that a faulty module has kept.
void releaseKeptPropertyMap();

} // namespace varno::fixture

#endif
