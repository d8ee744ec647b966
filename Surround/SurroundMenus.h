/// Menus and fields of a surround: presets, sizes, qualities, values.
#ifndef VARNO_SURROUND_SURROUNDMENUS_H
#define VARNO_SURROUND_SURROUNDMENUS_H

#include "Surround/BarControl.h"
#include "Surround/ControlActions.h"
#include "Surround/Settings/PresetStore.h"
#include "Surround/SurroundPlace.h"
#include "Surround/TextEntry.h"
#include "Window/PopupMenu.h"

#include <functional>
#include <string>
#include <vector>

namespace varno {

/// An item that a front end's host has for a parameter.
struct HostMenuItem {
    enum class Kind { kEntry, kHeading, kSeparator };

    Kind kind = Kind::kEntry;
    std::string text{};
    bool isEnabled = true;
    bool isChecked = false;
    std::function<void()> run{}; ///< Of an entry; not called from within a menu's events.
};

/// What menus act on; everything outlives them.
struct MenuSubject {
    EditedSettings& edited;
    PresetStore& presets;
    BarControl& bar;
    ControlActions& controls;
    std::function<double()> size;        ///< Of the window, one of kWindowSizes.
    std::function<void(double)> setSize; ///< Not called from within a menu's events.
    /// What the host has for a parameter.
    std::function<std::vector<HostMenuItem>(const std::string& id)> hostItems;
};

/// Opens them below what they belong to, one at a time. [main]
class SurroundMenus {
public:
    /// @param place outlives this object
    SurroundMenus(const SurroundPlace& place, MenuSubject subject);
    SurroundMenus(const SurroundMenus&) = delete;
    SurroundMenus& operator=(const SurroundMenus&) = delete;

    void openPresets();
    void openSizes();
    void openQualities();
    /// What can be done with a control of a parameter.
    void openControl(const FaceLayout::Control& control);
    /// A field for a value. @param text that it begins with
    void openValue(const FaceLayout::Control& control, const std::string& text);

    /// Whether a menu or a field is open, which takes the keys.
    bool isOpen() const { return mMenu.isOpen() || mEntry.isOpen(); }
    bool isEntryOpen() const { return mEntry.isOpen(); }
    /// A key for what is open. @param symbol of it
    void key(const xcb_key_press_event_t& event, xcb_keysym_t symbol);
    /// A press of a mouse button in the frame, seen while it is held. Menus see those themselves.
    void pressed(WindowPlace place) { mEntry.pressed(place); }
    /// Closes what is open.
    void dismiss();
    /// To be called some 30 times a second.
    void tick();

private:
    struct Row {
        MenuItem item;
        std::function<void()> run;
    };

    void open(std::vector<Row> rows, const WindowArea& below);
    void addPresets(std::vector<Row>& rows) const;
    void addHostItems(std::vector<Row>& rows, const std::string& id) const;
    void openName(const std::string& text, const std::function<void(const std::string&)>& use);
    std::string ownName() const;

    const SurroundPlace& mPlace;
    MenuSubject mSubject;
    PopupMenu mMenu;
    TextEntry mEntry;
    std::function<void()> mChosen; ///< Runs at the next tick, when the menu's events are done.
};

} // namespace varno

#endif
