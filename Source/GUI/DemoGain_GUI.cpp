#include "DemoGain_GUI.h"

IACFUnknown* DemoGain_GUI::Create() {
    return nullptr;
}
