/// A CLAP host's event loop around an editor.
#ifndef VARNO_FORMATS_CLAP_WINDOW_HOSTDESKTOP_H
#define VARNO_FORMATS_CLAP_WINDOW_HOSTDESKTOP_H

#include "CLAP/Clap/Gui.h"
#include "CLAP/HostCalls.h"
#include "Host/ViewContainer.h"

#include <vector>

namespace varno {

/// Has the scale of a window, and watches descriptors where the host does. Its timers never fire: the
/// window's own clock serves what the editor has timers for, and descriptors where the host watches none.
/// [main]
class HostDesktop final : public Desktop {
public:
    /// @param host outlives this object @param scale 1 is the plain size
    HostDesktop(const HostCalls& host, double scale);
    HostDesktop(const HostDesktop&) = delete;
    HostDesktop& operator=(const HostDesktop&) = delete;
    /// Ends all watches.
    ~HostDesktop() override;

    void setScale(double scale) { mScale = scale; }
    double scale() const override { return mScale; }
    void watch(int descriptor, const void* owner, Wake wake) override;
    void unwatch(int descriptor, const void* owner) override;
    void startTimer(std::chrono::milliseconds, const void*, Wake) override {}
    void stopTimer(const void*) override {}

    /// A descriptor can be read.
    void ready(int descriptor);

private:
    struct Watch {
        int descriptor;
        const void* owner;
        Wake wake;
    };

    bool isWatched(int descriptor) const;

    const HostCalls& mHost;
    const clap_host_posix_fd_support_t* mDescriptors;
    double mScale;
    std::vector<Watch> mWatches;
};

} // namespace varno

#endif
