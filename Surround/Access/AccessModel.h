/// What a screen reader finds in the window: plain data, which the window's maker fills.
#ifndef VARNO_SURROUND_ACCESS_ACCESSMODEL_H
#define VARNO_SURROUND_ACCESS_ACCESSMODEL_H

#include <optional>
#include <string>
#include <vector>

namespace varno {

/// What a part is for its user.
enum class AccessRole {
    kWindow, ///< The root of a tree.
    kPanel,  ///< Holds other parts.
    kLabel,
    kPushButton,
    kToggleButton, ///< Stays down: has the state isChecked.
    kCheckBox,
    kRadioButton, ///< One of several, of which one is checked.
    kComboBox,    ///< Opens a menu; its value text is what is chosen.
    kSlider,
    kDial,
    kEntry,    ///< A line of text.
    kLevelBar, ///< A meter. Its changes are not reported: readers read it when they are asked to.
    kStatusBar ///< Messages: its name is the present one, and a change of it is read out.
};

/// A value as a number, in the units of the text beside it.
struct AccessRange {
    double minimum = 0.0;
    double maximum = 1.0;
    double step = 0.0; ///< The smallest change; 0: any.
    double current = 0.0;

    bool operator==(const AccessRange&) const = default;
};

/// Pixels of the screen, not enlarged by any scale.
struct AccessRectangle {
    int x = 0;
    int y = 0;
    int width = 0;
    int height = 0;

    bool contains(int pointX, int pointY) const {
        return pointX >= x && pointX - x < width && pointY >= y && pointY - y < height;
    }
    bool operator==(const AccessRectangle&) const = default;
};

struct AccessStates {
    bool isEnabled = true;
    bool isShowing = true;
    bool isFocusable = false;
    bool isFocused = false;
    bool isChecked = false;
    bool isActive = false; ///< Of the window: it has the keys.

    bool operator==(const AccessStates&) const = default;
};

/// A part and what it holds.
struct AccessNode {
    std::string
        id{}; ///< Names the part as long as the window exists, and no other part: "Gain", "bar.bypass".
    AccessRole role = AccessRole::kPanel;
    std::string name{};        ///< What it is called: "Attack".
    std::string description{}; ///< One sentence of help; may be empty.
    std::string valueText{};   ///< The value as people say it, with its unit: "2.4 ms"; empty for none.
    std::optional<AccessRange> range{};
    bool isTextSettable = false; ///< The value can be typed: AccessWindow::setValueText.
    std::string action{};        ///< What a press does, in a word: "press", "toggle"; empty for nothing.
    AccessStates states{};
    AccessRectangle rectangle{};
    std::vector<AccessNode> children{}; ///< In reading order.

    bool operator==(const AccessNode&) const = default;
};

/// Describes a window, and receives what a user of a screen reader does to it. Implemented by the window's
/// maker. The changes name a part that the window had when it was last described, and return false where it
/// cannot be done; none may end the bridge that calls it: what closes the window does so later. [main]
class AccessWindow {
public:
    virtual ~AccessWindow() = default;
    /// The window with everything in it, as it is now. Called only while a screen reader may ask, at most
    /// about 30 times a second and after each change.
    virtual AccessNode describe() = 0;
    /// A value within the range of the part.
    virtual bool setValue(const std::string& id, double value) = 0;
    /// A text for a part that isTextSettable.
    virtual bool setValueText(const std::string& id, const std::string& text) = 0;
    /// A part's action.
    virtual bool press(const std::string& id) = 0;
    /// Gives a part that isFocusable the keys.
    virtual bool grabFocus(const std::string& id) = 0;
};

} // namespace varno

#endif
