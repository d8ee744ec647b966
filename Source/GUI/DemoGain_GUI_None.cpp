// An effect without an editor, for binaries that must not depend on a screen: linked instead of the editor.
#include "DemoGain_GUI.h"

AAX_IEffectGUI* DemoGain_GUI::Create() {
    return nullptr;
}
