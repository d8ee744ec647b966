#include "GUI/VSTGUI_Library.h"

#include "vstgui/lib/cframe.h"
#include "vstgui/lib/controls/ccontrol.h"
#include "vstgui/lib/vstguiinit.h"

namespace {

// Made at the first use, thus after the library's own static objects, and destroyed before them.
struct Library {
    explicit Library(const std::filesystem::path& resources) {
        VSTGUI::init(VSTGUI_Prepare(resources));
        VSTGUI::CControl::CheckDefaultValueEventFunc = [](VSTGUI::CControl*, VSTGUI::MouseDownEvent&) {
            return false;
        };
        VSTGUI::CFrame::kDefaultKnobMode = VSTGUI::kLinearMode;
    }
    Library(const Library&) = delete;
    Library& operator=(const Library&) = delete;
    ~Library() { VSTGUI::exit(); }
};

} // namespace

void UseVSTGUI(const std::filesystem::path& resources) {
    static const Library library(resources);
    VSTGUI_SetResources(resources);
}
