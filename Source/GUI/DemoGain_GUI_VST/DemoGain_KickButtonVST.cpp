#include "GUI/DemoGain_GUI_VST/DemoGain_KickButtonVST.h"

void DemoGain_KickButtonVST::endEdit() {
    if (isEditing() && getValue() != getMin()) {
        setValue(getMin());
        invalid();
    }
    DemoGain_HostGestures::endEdit();
}
