/// The creation of the editor.
#ifndef DEMOGAIN_GUI_H
#define DEMOGAIN_GUI_H

#include "ACF/IACFUnknown.h"

class DemoGain_GUI {
public:
    /// Makes an editor with no reference held yet, or answers null when the module has none. The module has
    /// no editor yet; a host then shows its own controls. [main]
    static IACFUnknown* Create();
};

#endif
