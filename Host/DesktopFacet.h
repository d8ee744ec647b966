/// A desktop as the module sees it.
#ifndef VARNO_HOST_DESKTOPFACET_H
#define VARNO_HOST_DESKTOPFACET_H

#include "AAX_IACFDesktop.h"
#include "Host/Desktop.h"
#include "Host/HostObject.h"

namespace varno {

/// Part of a view container: hands everything on to the desktop that the container was given. [main]
class DesktopFacet : public Facet<AAX_IACFDesktop> {
public:
    using Facet::Facet;

    /// Borrowed; null takes it away.
    void setDesktop(Desktop* desktop) { mDesktop = desktop; }
    bool hasDesktop() const { return mDesktop != nullptr; }

    AAX_Result GetScale(double* outScale) override;
    AAX_Result WatchDescriptor(std::int32_t descriptor, AAX_CWakeProc proc, void* context) override;
    AAX_Result UnwatchDescriptor(std::int32_t descriptor, void* context) override;
    AAX_Result StartTimer(std::uint32_t periodMs, AAX_CWakeProc proc, void* context) override;
    AAX_Result StopTimer(void* context) override;

private:
    Desktop* mDesktop = nullptr;
};

} // namespace varno

#endif
