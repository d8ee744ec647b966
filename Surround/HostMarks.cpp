#include "Surround/HostMarks.h"

#include "Surround/SurroundAccess.h"

namespace varno {
namespace {

using Automation = HostIndication::Automation;

constexpr std::uint32_t kPlainColour = 0x9FD0FF; // where the host names none
constexpr double kMarkGap = 2.0;
constexpr double kMarkThickness = 2.0;
constexpr int kDashes = 4;

// Of three lines as wide as the control: the last one, and the first where there are two.
std::vector<WindowArea> automationParts(Automation automation, int width, int thickness) {
    constexpr int kShortShare = 3;
    const int last = 2 * thickness;
    switch (automation) {
    case Automation::kPresent:
        return {{width / kShortShare, last, width / kShortShare, thickness}};
    case Automation::kRecording:
        return {{0, 0, width, thickness}, {0, last, width, thickness}};
    case Automation::kOverridden: {
        std::vector<WindowArea> dashes;
        constexpr int kPieces = 2 * kDashes - 1; // dashes and the gaps between them
        for (int i = 0; i < kDashes; ++i) {
            dashes.push_back({2 * i * width / kPieces, last, width / kPieces, thickness});
        }
        return dashes;
    }
    case Automation::kPlaying:
    case Automation::kNone:
        break;
    }
    return {{0, last, width, thickness}};
}

} // namespace

HostMarks::HostMarks(const SurroundPlace& place, bool hasBar)
    : mPlace(place),
      mItems(hasBar),
      mMarks(mItems.items().size()) {
}

void HostMarks::show(const IndicationOf& indicationOf) {
    for (std::size_t i = 0; i < mMarks.size(); ++i) {
        static const HostIndication kNothing;
        const FocusItem& item = mItems.items()[i];
        const HostIndication* const asked = indicationOf(item);
        const HostIndication& indication = asked == nullptr ? kNothing : *asked;
        if (mMarks[i].shown != indication) {
            mMarks[i].shown = indication;
            draw(item, mMarks[i]);
        }
    }
}

void HostMarks::arrange() {
    for (std::size_t i = 0; i < mMarks.size(); ++i) {
        draw(mItems.items()[i], mMarks[i]);
    }
}

std::string HostMarks::text(const FocusItem& item) const {
    for (std::size_t i = 0; i < mMarks.size(); ++i) {
        const FocusItem& own = mItems.items()[i];
        if (own.button == item.button && own.control == item.control) {
            return indicationText(mMarks[i].shown);
        }
    }
    return {};
}

std::map<std::string, std::string> HostMarks::texts() const {
    std::map<std::string, std::string> texts;
    for (std::size_t i = 0; i < mMarks.size(); ++i) {
        if (mMarks[i].shown != HostIndication()) {
            texts.emplace(accessIDOf(mItems.items()[i]), indicationText(mMarks[i].shown));
        }
    }
    return texts;
}

void HostMarks::draw(const FocusItem& item, Mark& mark) const {
    const WindowArea area = item.button != nullptr ? mPlace.ofBar(item.button->place)
                                                   : mPlace.ofFace(FaceLayout::boxOf(*item.control));
    const int gap = mPlace.style.pixels(kMarkGap);
    const int thickness = mPlace.style.pixels(kMarkThickness);
    mark.mapping.reset();
    mark.automation.reset();
    if (mark.shown.isMapped) {
        mark.mapping = window({area.x - gap - thickness, area.y, thickness, area.height},
                              {{0, 0, thickness, area.height}}, mark.shown.mappingColour);
    }
    if (mark.shown.automation != Automation::kNone) {
        constexpr int kLines = 3;              // two and the gap between them
        const int height = kLines * thickness; // within the control: there are letters below knobs
        mark.automation = window({area.x, area.y + area.height - height, area.width, height},
                                 automationParts(mark.shown.automation, area.width, thickness),
                                 mark.shown.automationColour);
    }
}

std::unique_ptr<OverlayWindow> HostMarks::window(const WindowArea& area, const std::vector<WindowArea>& parts,
                                                 std::optional<std::uint32_t> colour) const {
    auto made =
        std::make_unique<OverlayWindow>(mPlace.connection, mPlace.frame, colour.value_or(kPlainColour));
    made->setParts(area, parts);
    made->show();
    return made;
}

} // namespace varno
