// An effect without an editor, for binaries that must not depend on a display: linked instead of the editor.
#include "GUI/DemoGain_GUI_VST/DemoGain_GUI.h"

AAX_IEffectGUI* DemoGain_GUI::Create() {
    return nullptr;
}
