#include "Toolkit/VSTGUI_Library.h"

#include "vstgui/lib/cframe.h"
#include "vstgui/lib/controls/ccontrol.h"
#include "vstgui/lib/controls/cswitch.h"
#include "vstgui/lib/vstguiinit.h"

namespace {

// The setting of the switches' base, which only a switch may reach.
struct SwitchSetting : VSTGUI::CSwitchBase {
    // The rule by which the effect chooses a curve; the library calls it its former one.
    static void UseNearestPosition() {
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wdeprecated-declarations"
        useLegacyIndexCalculation = true;
#pragma GCC diagnostic pop
    }
};

// Made at the first use, thus after the library's own static objects, and destroyed before them.
struct Library {
    explicit Library(void* bundle) {
        VSTGUI::init(VSTGUI_Prepare(bundle));
        VSTGUI::CControl::CheckDefaultValueEventFunc = [](VSTGUI::CControl*, VSTGUI::MouseDownEvent&) {
            return false;
        };
        SwitchSetting::UseNearestPosition();
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library() { VSTGUI::exit(); }
};

void MakeLibrary(void* bundle) {
    static const Library library(bundle);
}

} // namespace

void UseVSTGUI() {
    MakeLibrary(nullptr);
}

void UseVSTGUI(const std::filesystem::path& resources, void* bundle) {
    MakeLibrary(bundle);
    VSTGUI_SetResources(resources);
}
