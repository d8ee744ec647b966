/// An editor's way to the desktop around its view, where the host tells of one.
#ifndef VARNO_SOURCE_GUI_DESKTOPLINK_H
#define VARNO_SOURCE_GUI_DESKTOPLINK_H

#include "AAX_IACFDesktop.h"
#include "ACF/ACFPtr.h"
#include "Platform/RunLoop.h"

#include <memory>

namespace varno {

/// Has the host's event loop drive a loop of the module's: whenever one of its descriptors can be read, and
/// once per frame of a usual display, so that what is drawn anew appears without delay. Goes before the
/// container goes. [main]
class DesktopLink {
public:
    /// `container` (borrowed) is the view container that the host has given; one that does not answer to
    /// IID_IVarnoDesktopV1 has no desktop, and every call here is harmless.
    explicit DesktopLink(IACFUnknown* container);
    DesktopLink(const DesktopLink&) = delete;
    DesktopLink& operator=(const DesktopLink&) = delete;
    /// Disconnects.
    ~DesktopLink();

    /// The factor by which the desktop enlarges what it shows; 1 without a desktop or a sensible answer.
    double scale() const;
    /// Begins to drive `loop`, in the place of any other.
    void connect(const std::shared_ptr<RunLoop>& loop);
    /// Takes every watch and the timer back.
    void disconnect();

private:
    /// What the host calls; `context` is the link.
    static void wake(void* context);

    ACFPtr<AAX_IACFDesktop> mDesktop;
    std::shared_ptr<RunLoop> mLoop; ///< The loop that is driven, or null.
    Registration mWatcher;
};

} // namespace varno

#endif
