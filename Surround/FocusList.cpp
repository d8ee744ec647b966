#include "Surround/FocusList.h"

#include "DemoGain_ParameterTable.h"
#include "Surround/Settings/SettingValues.h"

#include <algorithm>
#include <utility>

namespace varno {
namespace {

using FaceLayout::Control;

// Controls whose middles are within so many pixels are read as one row.
constexpr int kRowHeight = 50;

std::pair<int, int> readingPlace(const FocusItem& item) {
    const Box box = FaceLayout::boxOf(*item.control);
    return {(box.y + box.height / 2) / kRowHeight, box.x};
}

constexpr const char* kCopyName = "Copy Preset";
constexpr const char* kPasteName = "Paste Preset";

bool isCopy(const Control& control) {
    return control.mArt == DemoGain_ViewLayout::Art::kCopy;
}

} // namespace

std::string FocusItem::name() const {
    if (button != nullptr) {
        return button->name;
    }
    if (const auto setting = settingOf(control->mID)) {
        return settingName(*setting);
    }
    return isCopy(*control) ? kCopyName : kPasteName;
}

std::string FocusItem::help() const {
    if (button != nullptr) {
        return button->help;
    }
    if (const SDemoGain_Parameter* const parameter = DemoGain_FindParameter(control->mID)) {
        return parameter->mHelp;
    }
    return isCopy(*control) ? "Copies all settings as text."
                            : "Sets all settings from a text that was copied.";
}

FocusList::FocusList(bool hasBar) {
    if (hasBar) {
        for (const auto& row : BarLayout::kButtons) {
            mItems.push_back({&row, nullptr});
        }
    }
    const auto faceBegins = static_cast<std::ptrdiff_t>(mItems.size());
    for (const Control& control : DemoGain_ViewLayout::kControls) {
        if (control.mKind != FaceLayout::Kind::kMeter) {
            mItems.push_back({nullptr, &control});
        }
    }
    std::stable_sort(
        mItems.begin() + faceBegins, mItems.end(),
        [](const FocusItem& one, const FocusItem& other) { return readingPlace(one) < readingPlace(other); });
}

void FocusList::move(bool isForward) {
    const std::size_t count = mItems.size();
    if (!mPresent) {
        mPresent = isForward ? 0 : count - 1;
    } else {
        mPresent = (*mPresent + (isForward ? 1 : count - 1)) % count;
    }
}

bool FocusList::choose(const std::function<bool(const FocusItem&)>& isIt) {
    const auto found = std::ranges::find_if(mItems, isIt);
    if (found == mItems.end()) {
        return false;
    }
    mPresent = static_cast<std::size_t>(found - mItems.begin());
    return true;
}

} // namespace varno
