/// The marks beside controls that a front end's host asks for.
#ifndef VARNO_SURROUND_HOSTMARKS_H
#define VARNO_SURROUND_HOSTMARKS_H

#include "Surround/FocusList.h"
#include "Surround/Settings/HostIndication.h"
#include "Surround/SurroundPlace.h"
#include "Window/OverlayWindow.h"

#include <functional>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace varno {

/// A line at the left of what is mapped to a controller; at the foot of what has automation, a line whose
/// form says which: a short one where it is not played, a whole one where it is, two where it is recorded,
/// dashes where it is overridden. The host chooses the colours. [main]
class HostMarks {
public:
    /// Null for nothing; read within the call. [main]
    using IndicationOf = std::function<const HostIndication*(const FocusItem&)>;

    /// @param place outlives this object @param hasBar whether the bar's buttons are marked too
    HostMarks(const SurroundPlace& place, bool hasBar);

    /// Shows what has changed.
    void show(const IndicationOf& indicationOf);
    /// The place has another scale.
    void arrange();

    /// What is shown, as a sentence; empty for nothing.
    std::string text(const FocusItem& item) const;
    /// All that is shown, by the parts' identifiers for screen readers.
    std::map<std::string, std::string> texts() const;

private:
    struct Mark {
        HostIndication shown;
        std::unique_ptr<OverlayWindow> mapping; ///< Null where nothing is shown.
        std::unique_ptr<OverlayWindow> automation;
    };

    void draw(const FocusItem& item, Mark& mark) const;
    std::unique_ptr<OverlayWindow> window(const WindowArea& area, const std::vector<WindowArea>& parts,
                                          std::optional<std::uint32_t> colour) const;

    const SurroundPlace& mPlace;
    FocusList mItems;
    std::vector<Mark> mMarks; ///< In the order of the items.
};

} // namespace varno

#endif
