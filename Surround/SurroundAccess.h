/// The surround of an editor as screen readers see it.
#ifndef VARNO_SURROUND_SURROUNDACCESS_H
#define VARNO_SURROUND_SURROUNDACCESS_H

#include "Host/Instance.h"
#include "Surround/Access/AccessModel.h"
#include "Surround/BarState.h"
#include "Surround/FaceLayout.h"
#include "Surround/FocusList.h"
#include "Surround/Settings/EditedSettings.h"

#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace varno {

/// What a description needs beside the values of the effect. Plain data.
struct SurroundView {
    std::string title;       ///< Of the window.
    AccessRectangle place{}; ///< Of bar and editor, on the screen.
    double scale = 1.0;      ///< Pixels of the screen to one of the layouts.
    int barHeight = 0;       ///< Pixels; 0: there is no bar.
    bool isActive = false;   ///< The window has the keys.
    std::string focused{};   ///< Identifier of the part with the focus mark; empty for none.
    BarState bar{};
    BarMeters meters{};
    std::map<std::string, std::string> hostTexts{}; ///< What the host shows of parts, as sentences.
};

/// The identifier of a button of the bar; those of the effect's controls are their parameters'. [any]
std::string accessIDOf(BarLayout::Button button);
std::string accessIDOf(const FocusItem& item);
/// The button of an identifier; nothing for another part. [any]
std::optional<BarLayout::Button> buttonOfAccessID(std::string_view id);

/// The window: the bar, then the effect's controls in reading order. The number of a control's value is its
/// step, from 0. @param instance of Varno-S [main]
AccessNode describeSurround(const SurroundView& view, const Instance& instance);

/// Carries out what a user of a screen reader does to the surround, as steps that can be undone. [main]
class SurroundAccess final : public AccessWindow {
public:
    /// What the surround does for it. [main]
    class Owner {
    public:
        virtual ~Owner() = default;
        virtual SurroundView accessView() = 0;
        virtual void press(BarLayout::Button button) = 0;
        /// Presses a switch or a button of the editor, as a click does: that starts what the editor alone can
        /// do, such as Auto Gain.
        virtual void press(const FaceLayout::Control& control) = 0;
        /// Moves the focus mark. @param id of a button or a parameter @return whether it is there
        virtual bool focus(const std::string& id) = 0;
    };

    /// @param instance of Varno-S; all outlive this object
    SurroundAccess(const Instance& instance, EditedSettings& edited, Owner& owner)
        : mInstance(instance),
          mEdited(edited),
          mOwner(owner) {}

    AccessNode describe() override { return describeSurround(mOwner.accessView(), mInstance); }
    bool setValue(const std::string& id, double value) override;
    bool setValueText(const std::string& id, const std::string& text) override;
    bool press(const std::string& id) override;
    bool grabFocus(const std::string& id) override { return mOwner.focus(id); }

private:
    const Instance& mInstance;
    EditedSettings& mEdited;
    Owner& mOwner;
};

} // namespace varno

#endif
