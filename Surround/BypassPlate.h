/// What the face shows while the effect is bypassed.
#ifndef VARNO_SURROUND_BYPASSPLATE_H
#define VARNO_SURROUND_BYPASSPLATE_H

#include "Surround/SurroundPlace.h"
#include "Toolkit/WidgetFrame.h"
#include "Window/HolderWindow.h"

#include <string>

namespace varno {

/// A lit plate over the part of the face that the artwork leaves free, so that it hides no control and no
/// legend. [main]
class BypassPlate {
public:
    /// Opens it. @param place outlives this object
    /// @param reason why the effect is bypassed, one line
    BypassPlate(const SurroundPlace& place, const std::string& reason);

    const std::string& reason() const { return mReason; }
    /// Where it is on the face, in pixels at scale 1.
    static Box box();

private:
    std::string mReason;
    HolderWindow mHolder;
    WidgetFrame mFrame;
};

} // namespace varno

#endif
