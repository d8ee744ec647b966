#include "Tests/Apps/varno/Support/WindowChanges.h"

#include "Surround/FaceLayout.h"

#include <stdexcept>
#include <vector>

namespace varno::test {
namespace {

// A part's place in the window at scale 1. A text has no name.
struct Part {
    Box place;
    std::string name;
};

// A pixel more at each edge: between whole scales parts end within a pixel.
Box widened(const Box& box, int top = 0) {
    return {box.x - 1, top + box.y - 1, box.width + 2, box.height + 2};
}

// Texts come first: some lie at the edge of a control.
std::vector<Part> partsOfWindow() {
    std::vector<Part> parts;
    for (const auto& row : BarLayout::kMeters) {
        parts.push_back({widened(row.label), ""});
        parts.push_back({widened(row.number), ""});
    }
    for (const Box& text : {BarLayout::kReductionLabel, BarLayout::kReduction, BarLayout::kMessage}) {
        parts.push_back({widened(text), ""});
    }
    constexpr auto kStatus = DemoGain_ViewLayout::kStatusLabel;
    parts.push_back({{kStatus.mLeft, BarLayout::kHeight + kStatus.mTop, kStatus.mRight - kStatus.mLeft,
                      kStatus.mBottom - kStatus.mTop},
                     ""});
    for (const auto& control : DemoGain_ViewLayout::kControls) {
        parts.push_back({widened(FaceLayout::boxOf(control), BarLayout::kHeight), control.mID});
    }
    for (const auto& row : BarLayout::kButtons) {
        parts.push_back({widened(row.place), row.name});
    }
    for (const auto& row : BarLayout::kMeters) {
        parts.push_back({widened(row.meter), row.name});
    }
    for (const auto& control : DemoGain_ViewLayout::kControls) {
        Box legend = FaceLayout::legendOf(control);
        legend.y += BarLayout::kHeight;
        parts.push_back({legend, ""});
    }
    return parts;
}

std::string squareAt(int x, int y) {
    constexpr int kSquare = 10;
    const bool isBar = y < BarLayout::kHeight;
    const int top = isBar ? y : y - BarLayout::kHeight;
    return std::string(isBar ? "bar" : "face") + " at " + std::to_string(x - x % kSquare) + ", " +
           std::to_string(top - top % kSquare);
}

} // namespace

std::set<std::string> changedParts(const Picture& before, const Picture& after, double scale) {
    if (before.width() != after.width() || before.height() != after.height()) {
        throw std::invalid_argument("pictures of different sizes");
    }
    const std::vector<Part> parts = partsOfWindow();
    std::set<std::string> changed;
    for (int y = 0; y < before.height(); ++y) {
        for (int x = 0; x < before.width(); ++x) {
            if (before.at({x, y}) == after.at({x, y})) {
                continue;
            }
            const int left = static_cast<int>(x / scale);
            const int top = static_cast<int>(y / scale);
            const auto part =
                std::ranges::find_if(parts, [&](const Part& each) { return each.place.contains(left, top); });
            changed.insert(part == parts.end() ? squareAt(left, top) : part->name);
        }
    }
    changed.erase("");
    return changed;
}

} // namespace varno::test
