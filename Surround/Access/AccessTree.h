/// The parts of a window as screen readers address them, and what has changed about them.
#ifndef VARNO_SURROUND_ACCESS_ACCESSTREE_H
#define VARNO_SURROUND_ACCESS_ACCESSTREE_H

#include "Surround/Access/AccessModel.h"

#include <bitset>
#include <cstddef>
#include <map>
#include <string>
#include <vector>

namespace varno {

/// Numbers of states on the accessibility bus.
enum class AccessState : std::size_t {
    kActive = 1,
    kChecked = 4,
    kEditable = 7,
    kEnabled = 8,
    kFocusable = 11,
    kFocused = 12,
    kPressed = 20,
    kSensitive = 24,
    kShowing = 25,
    kSingleLine = 26,
    kVisible = 30,
    kCheckable = 41,
    kHasPopup = 42,
    kReadOnly = 43
};

/// A set of states, by their numbers.
using AccessStateSet = std::bitset<64>;

/// The states that a part has on the bus. [any]
AccessStateSet accessStates(const AccessNode& node);

/// A part's number; the same as long as the tree exists, also where the part is gone for a while.
using AccessNumber = unsigned;
/// Stands for the application, which holds the window.
inline constexpr AccessNumber kAccessApplication = 0;

/// A part and its place.
struct AccessEntry {
    const AccessNode* node = nullptr;
    AccessNumber parent = kAccessApplication;
    int index = 0; ///< Among the parent's children.
};

struct AccessChange {
    enum class Kind { kName, kDescription, kValue, kState, kAdded, kRemoved };

    Kind kind = Kind::kName;
    AccessNumber part = kAccessApplication;
    std::size_t state = 0; ///< kState: which.
    bool isOn = false;     ///< kState: now.
    AccessEntry place{};   ///< kAdded, kRemoved: where; the node is null.
};

/// Numbers the parts of a tree and compares each update with the one before. [main]
class AccessTree {
public:
    /// What differs from the last update: removed parts first. A part that has moved to another parent is
    /// removed and added. A part whose identifier another one before it has is left out, with what it holds.
    std::vector<AccessChange> update(AccessNode root);

    /// Null where no part has that number.
    const AccessEntry* find(AccessNumber part) const;
    /// All parts.
    const std::map<AccessNumber, AccessEntry>& entries() const { return mEntries; }
    /// The numbers of a part's children in order; of kAccessApplication, the window.
    std::vector<AccessNumber> childrenOf(AccessNumber part) const;

private:
    using Entries = std::map<AccessNumber, AccessEntry>;

    bool add(Entries& entries, const AccessNode& node, AccessNumber parent, int index);

    AccessNode mRoot;
    Entries mEntries;
    std::map<std::string, AccessNumber> mNumbers;
};

} // namespace varno

#endif
