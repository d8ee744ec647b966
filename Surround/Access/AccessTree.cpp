#include "Surround/Access/AccessTree.h"

#include <utility>

namespace varno {
namespace {

bool isValueKept(const AccessNode& before, const AccessNode& now) {
    return now.role == AccessRole::kLevelBar ||
           (before.valueText == now.valueText && before.range == now.range);
}

void compare(AccessNumber part, const AccessNode& before, const AccessNode& now,
             std::vector<AccessChange>& changes) {
    using Kind = AccessChange::Kind;
    if (before.name != now.name) {
        changes.push_back({Kind::kName, part});
    }
    if (before.description != now.description) {
        changes.push_back({Kind::kDescription, part});
    }
    if (!isValueKept(before, now)) {
        changes.push_back({Kind::kValue, part});
    }
    const AccessStateSet states = accessStates(now);
    const AccessStateSet changed = states ^ accessStates(before);
    for (std::size_t state = 0; state < changed.size(); ++state) {
        if (changed[state]) {
            changes.push_back({Kind::kState, part, state, states[state]});
        }
    }
}

} // namespace

AccessStateSet accessStates(const AccessNode& node) {
    AccessStateSet states;
    const auto set = [&](AccessState state, bool isOn) { states[static_cast<std::size_t>(state)] = isOn; };
    const bool isToggle = node.role == AccessRole::kToggleButton;
    const bool isChecking =
        isToggle || node.role == AccessRole::kCheckBox || node.role == AccessRole::kRadioButton;
    set(AccessState::kEnabled, node.states.isEnabled);
    set(AccessState::kSensitive, node.states.isEnabled);
    set(AccessState::kShowing, node.states.isShowing);
    set(AccessState::kVisible, node.states.isShowing);
    set(AccessState::kFocusable, node.states.isFocusable);
    set(AccessState::kFocused, node.states.isFocused);
    set(AccessState::kActive, node.states.isActive);
    set(AccessState::kCheckable, isChecking);
    set(AccessState::kChecked, isChecking && node.states.isChecked);
    set(AccessState::kPressed, isToggle && node.states.isChecked);
    set(AccessState::kEditable, node.isTextSettable);
    set(AccessState::kSingleLine, node.isTextSettable);
    set(AccessState::kHasPopup, node.role == AccessRole::kComboBox);
    set(AccessState::kReadOnly, node.role == AccessRole::kLevelBar);
    return states;
}

bool AccessTree::add(Entries& entries, const AccessNode& node, AccessNumber parent, int index) {
    const AccessNumber number =
        mNumbers.try_emplace(node.id, static_cast<AccessNumber>(mNumbers.size() + 1)).first->second;
    if (!entries.try_emplace(number, AccessEntry{&node, parent, index}).second) {
        return false;
    }
    int next = 0;
    for (const AccessNode& child : node.children) {
        next += add(entries, child, number, next) ? 1 : 0;
    }
    return true;
}

std::vector<AccessChange> AccessTree::update(AccessNode root) {
    if (!mEntries.empty() && root == mRoot) {
        return {};
    }
    Entries now;
    add(now, root, kAccessApplication, 0);
    std::vector<AccessChange> changes;
    for (const auto& [part, before] : mEntries) {
        const auto found = now.find(part);
        if (found == now.end() || found->second.parent != before.parent) {
            changes.push_back(
                {AccessChange::Kind::kRemoved, part, 0, false, {nullptr, before.parent, before.index}});
        }
    }
    for (const auto& [part, entry] : now) {
        const auto before = mEntries.find(part);
        if (before == mEntries.end() || before->second.parent != entry.parent) {
            changes.push_back(
                {AccessChange::Kind::kAdded, part, 0, false, {nullptr, entry.parent, entry.index}});
        }
        if (before != mEntries.end()) {
            compare(part, *before->second.node, *entry.node, changes);
        }
    }
    // Moved, the root lies elsewhere; and the entries from before are no more.
    mRoot = std::move(root);
    mEntries.clear();
    add(mEntries, mRoot, kAccessApplication, 0);
    return changes;
}

const AccessEntry* AccessTree::find(AccessNumber part) const {
    const auto found = mEntries.find(part);
    return found == mEntries.end() ? nullptr : &found->second;
}

std::vector<AccessNumber> AccessTree::childrenOf(AccessNumber part) const {
    std::vector<AccessNumber> children;
    if (part == kAccessApplication && !mEntries.empty()) {
        children.push_back(mNumbers.at(mRoot.id));
    }
    if (const AccessEntry* const entry = find(part); entry != nullptr) {
        for (const AccessNode& child : entry->node->children) {
            const AccessNumber number = mNumbers.at(child.id);
            if (find(number)->node == &child) {
                children.push_back(number);
            }
        }
    }
    return children;
}

} // namespace varno
