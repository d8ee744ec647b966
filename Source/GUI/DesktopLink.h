/// An editor's connection to the desktop around its view, where the host has one.
#ifndef VARNO_SOURCE_GUI_DESKTOPLINK_H
#define VARNO_SOURCE_GUI_DESKTOPLINK_H

#include "AAX_IACFDesktop.h"
#include "ACF/ACFPtr.h"
#include "Platform/RunLoop.h"

#include <memory>

namespace varno {

/// Lets the host's event loop drive a loop of the module: whenever one of its descriptors can be read, and
/// once per frame of a usual display, so that redrawn parts appear without delay. Is destroyed before the
/// container. [main]
class DesktopLink {
public:
    /// `container` (borrowed) is the host's view container. Where it does not implement IID_IVarnoDesktopV1
    /// there is no desktop, and every call here does nothing.
    explicit DesktopLink(IACFUnknown* container);
    DesktopLink(const DesktopLink&) = delete;
    DesktopLink& operator=(const DesktopLink&) = delete;
    /// Disconnects.
    ~DesktopLink();

    /// The desktop's scale factor; 1 without a desktop or where it reports no positive number.
    double scale() const;
    /// The knob mode that the desktop asks for, one of VSTGUI's; -1 where it asks for none.
    int32_t knobMode() const;
    /// Begins to drive `loop` and stops driving any other. The desktop may call disconnect() from within;
    /// the caller holds the link meanwhile.
    void connect(const std::shared_ptr<RunLoop>& loop);
    /// Removes every watch and the timer.
    void disconnect();

private:
    /// The callback that the host calls; `context` is the link.
    static void wake(void* context);

    ACFPtr<AAX_IACFDesktop> mDesktop;
    std::shared_ptr<RunLoop> mLoop; ///< The loop that is driven, or null.
    Registration mWatcher;
};

} // namespace varno

#endif
