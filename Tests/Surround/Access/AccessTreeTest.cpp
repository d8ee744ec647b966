#include "Surround/Access/AccessTree.h"

#include <gmock/gmock.h>

namespace varno {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using Kind = AccessChange::Kind;

AccessNode node(std::string id, std::vector<AccessNode> children = {}) {
    AccessNode made;
    made.id = std::move(id);
    made.children = std::move(children);
    return made;
}

// "kind part" of each change, with the state's number and value.
std::vector<std::string> textsOf(const std::vector<AccessChange>& changes) {
    static const std::map<Kind, std::string> names = {
        {Kind::kName, "name"},   {Kind::kDescription, "description"},
        {Kind::kValue, "value"}, {Kind::kState, "state"},
        {Kind::kAdded, "added"}, {Kind::kRemoved, "removed"}};
    std::vector<std::string> texts;
    for (const AccessChange& change : changes) {
        std::string text = names.at(change.kind) + ' ' + std::to_string(change.part);
        if (change.kind == Kind::kState) {
            text += ' ' + std::to_string(change.state) + (change.isOn ? " on" : " off");
        } else if (change.kind == Kind::kAdded || change.kind == Kind::kRemoved) {
            text += " at " + std::to_string(change.place.parent) + '.' + std::to_string(change.place.index);
        }
        texts.push_back(text);
    }
    return texts;
}

TEST(AccessTree, NumbersPartsInOrder) {
    AccessTree tree;
    EXPECT_THAT(tree.childrenOf(kAccessApplication), IsEmpty());
    EXPECT_EQ(tree.find(1), nullptr);
    EXPECT_THAT(textsOf(tree.update(node("w", {node("a", {node("b")}), node("c")}))),
                ElementsAre("added 1 at 0.0", "added 2 at 1.0", "added 3 at 2.0", "added 4 at 1.1"));
    EXPECT_THAT(tree.childrenOf(kAccessApplication), ElementsAre(1U));
    EXPECT_THAT(tree.childrenOf(1), ElementsAre(2U, 4U));
    EXPECT_THAT(tree.childrenOf(2), ElementsAre(3U));
    EXPECT_THAT(tree.childrenOf(3), IsEmpty());
    EXPECT_THAT(tree.childrenOf(99), IsEmpty());
    EXPECT_EQ(tree.find(3)->node->id, "b");
    EXPECT_EQ(tree.find(4)->parent, 1U);
    EXPECT_EQ(tree.find(4)->index, 1);
    EXPECT_EQ(tree.find(kAccessApplication), nullptr);
}

TEST(AccessTree, ReportsWhatHasChanged) {
    AccessTree tree;
    AccessNode part = node("a");
    part.range = AccessRange{};
    part.valueText = "0";
    tree.update(node("w", {part, node("b")}));
    EXPECT_THAT(tree.update(node("w", {part, node("b")})), IsEmpty());
    part.name = "A";
    EXPECT_THAT(textsOf(tree.update(node("w", {part, node("b")}))), ElementsAre("name 2"));
    part.description = "The first.";
    EXPECT_THAT(textsOf(tree.update(node("w", {part, node("b")}))), ElementsAre("description 2"));
    part.valueText = "0 dB";
    EXPECT_THAT(textsOf(tree.update(node("w", {part, node("b")}))), ElementsAre("value 2"));
    part.range->current = 0.5;
    EXPECT_THAT(textsOf(tree.update(node("w", {part, node("b")}))), ElementsAre("value 2"));
    part.states.isFocused = true;
    EXPECT_THAT(textsOf(tree.update(node("w", {part, node("b")}))), ElementsAre("state 2 12 on"));
    part.states.isEnabled = false;
    EXPECT_THAT(textsOf(tree.update(node("w", {part, node("b")}))),
                ElementsAre("state 2 8 off", "state 2 24 off"));
    part.rectangle.width = 10;
    EXPECT_THAT(tree.update(node("w", {part, node("b")})), IsEmpty()) << "readers ask for it";
    EXPECT_EQ(tree.find(2)->node->rectangle.width, 10);
}

TEST(AccessTree, PartsComeAndGoAndKeepTheirNumbers) {
    AccessTree tree;
    tree.update(node("w", {node("a"), node("b", {node("c")})}));
    EXPECT_THAT(textsOf(tree.update(node("w", {node("b", {node("c")})}))), ElementsAre("removed 2 at 1.0"));
    EXPECT_EQ(tree.find(2), nullptr);
    EXPECT_EQ(tree.find(3)->index, 0);
    EXPECT_THAT(textsOf(tree.update(node("w", {node("b"), node("d"), node("a")}))),
                ElementsAre("removed 4 at 3.0", "added 2 at 1.2", "added 5 at 1.1"));
}

TEST(AccessTree, AMovedPartIsRemovedAndAdded) {
    AccessTree tree;
    tree.update(node("w", {node("a"), node("b", {node("c")})}));
    EXPECT_THAT(textsOf(tree.update(node("w", {node("a", {node("c")}), node("b")}))),
                ElementsAre("removed 4 at 3.0", "added 4 at 2.0"));
    EXPECT_THAT(tree.childrenOf(2), ElementsAre(4U));
}

TEST(AccessTree, LeavesOutASecondPartOfAnIdentifier) {
    AccessTree tree;
    tree.update(node("w", {node("a"), node("a", {node("b")}), node("w"), node("c")}));
    EXPECT_THAT(tree.childrenOf(1), ElementsAre(2U, 3U));
    EXPECT_EQ(tree.find(3)->node->id, "c");
    EXPECT_EQ(tree.find(3)->index, 1);
    EXPECT_EQ(tree.entries().size(), 3U);
}

TEST(AccessTree, AMovingMeterIsNoChange) {
    AccessTree tree;
    AccessNode meter = node("m");
    meter.role = AccessRole::kLevelBar;
    meter.range = AccessRange{};
    tree.update(node("w", {meter}));
    meter.range->current = 0.5;
    meter.valueText = "0.5";
    EXPECT_THAT(tree.update(node("w", {meter})), IsEmpty());
    EXPECT_EQ(tree.find(2)->node->range->current, 0.5);
}

std::vector<std::size_t> statesOf(AccessRole role, const AccessStates& states, bool isTextSettable = false) {
    AccessNode made;
    made.role = role;
    made.states = states;
    made.isTextSettable = isTextSettable;
    const AccessStateSet set = accessStates(made);
    std::vector<std::size_t> numbers;
    for (std::size_t state = 0; state < set.size(); ++state) {
        if (set[state]) {
            numbers.push_back(state);
        }
    }
    return numbers;
}

TEST(AccessStates, AreThoseOfTheRole) {
    const AccessStates checked{.isFocusable = true, .isFocused = true, .isChecked = true};
    EXPECT_THAT(statesOf(AccessRole::kPanel, {}), ElementsAre(8U, 24U, 25U, 30U));
    EXPECT_THAT(statesOf(AccessRole::kPanel, {.isEnabled = false, .isShowing = false}), IsEmpty());
    EXPECT_THAT(statesOf(AccessRole::kCheckBox, checked), ElementsAre(4U, 8U, 11U, 12U, 24U, 25U, 30U, 41U));
    EXPECT_THAT(statesOf(AccessRole::kRadioButton, checked),
                ElementsAre(4U, 8U, 11U, 12U, 24U, 25U, 30U, 41U));
    EXPECT_THAT(statesOf(AccessRole::kToggleButton, checked),
                ElementsAre(4U, 8U, 11U, 12U, 20U, 24U, 25U, 30U, 41U));
    EXPECT_THAT(statesOf(AccessRole::kToggleButton, {}), ElementsAre(8U, 24U, 25U, 30U, 41U));
    EXPECT_THAT(statesOf(AccessRole::kDial, checked), ElementsAre(8U, 11U, 12U, 24U, 25U, 30U));
    EXPECT_THAT(statesOf(AccessRole::kEntry, {}, true), ElementsAre(7U, 8U, 24U, 25U, 26U, 30U));
    EXPECT_THAT(statesOf(AccessRole::kComboBox, {}), ElementsAre(8U, 24U, 25U, 30U, 42U));
    EXPECT_THAT(statesOf(AccessRole::kLevelBar, {}), ElementsAre(8U, 24U, 25U, 30U, 43U));
    EXPECT_THAT(statesOf(AccessRole::kWindow, {.isActive = true}), ElementsAre(1U, 8U, 24U, 25U, 30U));
}

} // namespace
} // namespace varno
