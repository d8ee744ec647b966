// What a screen reader is answered.
#include "Tests/Surround/Access/AccessSession.h"

#include <gmock/gmock.h>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::StartsWith;

constexpr const char* kAccessibleFace = "org.a11y.atspi.Accessible";
constexpr const char* kApplicationFace = "org.a11y.atspi.Application";
constexpr const char* kComponentFace = "org.a11y.atspi.Component";
constexpr const char* kValueFace = "org.a11y.atspi.Value";
constexpr const char* kActionFace = "org.a11y.atspi.Action";
constexpr const char* kTextFace = "org.a11y.atspi.Text";
constexpr const char* kEditableFace = "org.a11y.atspi.EditableText";

constexpr const char* kInvalidArgs = "org.freedesktop.DBus.Error.InvalidArgs";
constexpr const char* kUnknownMethod = "org.freedesktop.DBus.Error.UnknownMethod";

class AccessBridgeTest : public AccessFixture {};

TEST_F(AccessBridgeTest, TheApplicationStandsInTheRegistry) {
    open();
    EXPECT_EQ(applications(), "([('" + mName + "', '" + rootPath() + "')],)");
    EXPECT_TRUE(mBridge->isActive());
    EXPECT_EQ(get(rootPath(), kAccessibleFace, "Name"), "(<'Test effect'>,)");
    EXPECT_EQ(ask(rootPath(), kAccessibleFace, "GetRole"), "(75,)");
    EXPECT_EQ(ask(rootPath(), kAccessibleFace, "GetRoleName"), "('application',)");
    EXPECT_EQ(ask(rootPath(), kAccessibleFace, "GetInterfaces"),
              "(['org.a11y.atspi.Accessible', 'org.a11y.atspi.Application'],)");
    EXPECT_EQ(ask(rootPath(), kAccessibleFace, "GetIndexInParent"), "(-1,)");
    EXPECT_EQ(get(rootPath(), kAccessibleFace, "ChildCount"), "(<1>,)");
    EXPECT_EQ(get(rootPath(), kApplicationFace, "ToolkitName"), "(<'Test effect'>,)");
    EXPECT_EQ(ask(rootPath(), kApplicationFace, "GetLocale", "(uint32 0,)"), "('en',)");
    EXPECT_TRUE(reader().eventually([&] {
        return get(rootPath(), kAccessibleFace, "Parent").find("/org/a11y/atspi/null") == std::string::npos;
    }));
    EXPECT_EQ(set(rootPath(), kApplicationFace, "Id", "7"), "()");
    EXPECT_EQ(get(rootPath(), kApplicationFace, "Id"), "(<7>,)");
}

TEST_F(AccessBridgeTest, TheTreeIsThatOfTheWindow) {
    open();
    const std::string window = pathOf("window");
    EXPECT_EQ(get(window, kAccessibleFace, "Name"), "(<'Effect of a test'>,)");
    EXPECT_EQ(get(window, kAccessibleFace, "ChildCount"), "(<3>,)");
    EXPECT_EQ(get(window, kAccessibleFace, "Parent"), "(<('" + mName + "', '" + rootPath() + "')>,)");
    const std::string gain = pathOf("Gain");
    const std::string high = pathOf("HP");
    const std::string panel = pathOf("panel");
    EXPECT_EQ(ask(panel, kAccessibleFace, "GetChildren"),
              "([('" + mName + "', '" + gain + "'), ('" + mName + "', '" + high + "')],)");
    EXPECT_EQ(ask(panel, kAccessibleFace, "GetChildAtIndex", "(1,)"), "(('" + mName + "', '" + high + "'),)");
    EXPECT_EQ(ask(panel, kAccessibleFace, "GetChildAtIndex", "(2,)"), "(('', '/org/a11y/atspi/null'),)");
    EXPECT_EQ(ask(panel, kAccessibleFace, "GetChildAtIndex", "(-1,)"), "(('', '/org/a11y/atspi/null'),)");
    EXPECT_EQ(ask(high, kAccessibleFace, "GetIndexInParent"), "(1,)");
    EXPECT_EQ(ask(high, kAccessibleFace, "GetApplication"), "(('" + mName + "', '" + rootPath() + "'),)");
    EXPECT_EQ(ask(high, kAccessibleFace, "GetRelationSet"), "([],)");
    EXPECT_EQ(get(high, kAccessibleFace, "Locale"), "(<'en'>,)");
}

TEST_F(AccessBridgeTest, AControlHasNameValueRangeAndStates) {
    open();
    const std::string gain = pathOf("Gain");
    EXPECT_EQ(get(gain, kAccessibleFace, "Name"), "(<'Gain'>,)");
    EXPECT_EQ(get(gain, kAccessibleFace, "Description"), "(<'How loud it is.'>,)");
    EXPECT_EQ(ask(gain, kAccessibleFace, "GetRole"), "(15,)");
    EXPECT_EQ(ask(gain, kAccessibleFace, "GetLocalizedRoleName"), "('dial',)");
    EXPECT_EQ(ask(gain, kAccessibleFace, "GetAttributes"), "({'valuetext': '-3.0 dB'},)");
    // Enabled, sensitive, showing, visible, focusable, editable and of one line.
    const unsigned states = 1U << 8U | 1U << 24U | 1U << 25U | 1U << 30U | 1U << 11U | 1U << 7U | 1U << 26U;
    EXPECT_EQ(ask(gain, kAccessibleFace, "GetState"), "([" + std::to_string(states) + ", 0],)");
    EXPECT_EQ(ask(pathOf("HP"), kAccessibleFace, "GetState"),
              "([" + std::to_string(1U << 8U | 1U << 24U | 1U << 25U | 1U << 30U) + ", " +
                  std::to_string(1U << 9U) + "],)");
    EXPECT_EQ(get(gain, kValueFace, "MinimumValue"), "(<-24.0>,)");
    EXPECT_EQ(get(gain, kValueFace, "MaximumValue"), "(<24.0>,)");
    EXPECT_EQ(get(gain, kValueFace, "MinimumIncrement"), "(<0.5>,)");
    EXPECT_EQ(get(gain, kValueFace, "CurrentValue"), "(<-3.0>,)");
    EXPECT_EQ(get(gain, kValueFace, "Text"), "(<'-3.0 dB'>,)");
    mWindow.part("Gain").range->current = 6.0;
    mWindow.part("Gain").valueText = "6.0 dB";
    EXPECT_EQ(get(gain, kValueFace, "CurrentValue"), "(<6.0>,)");
    EXPECT_EQ(get(gain, kValueFace, "Text"), "(<'6.0 dB'>,)");
}

TEST_F(AccessBridgeTest, AValueCanBeSetWithinItsRange) {
    open();
    const std::string gain = pathOf("Gain");
    EXPECT_EQ(set(gain, kValueFace, "CurrentValue", "1.5"), "()");
    EXPECT_EQ(get(gain, kValueFace, "CurrentValue"), "(<1.5>,)") << "at once";
    EXPECT_EQ(set(gain, kValueFace, "CurrentValue", "100.0"), "()");
    EXPECT_EQ(set(gain, kValueFace, "CurrentValue", "-100.0"), "()");
    EXPECT_THAT(mWindow.notes, ElementsAre("Gain = 1.500000", "Gain = 24.000000", "Gain = -24.000000"));
    mWindow.notes.clear();
    EXPECT_EQ(set(gain, kValueFace, "CurrentValue", "nan"), kInvalidArgs);
    EXPECT_EQ(set(gain, kValueFace, "CurrentValue", "'loud'"), kInvalidArgs);
    EXPECT_EQ(set(gain, kValueFace, "MaximumValue", "1.0"), kInvalidArgs);
    EXPECT_EQ(set(pathOf("meter"), kValueFace, "CurrentValue", "-6.0"), kInvalidArgs);
    mWindow.part("Gain").states.isEnabled = false;
    EXPECT_EQ(set(gain, kValueFace, "CurrentValue", "0.0"), kInvalidArgs);
    EXPECT_THAT(mWindow.notes, IsEmpty());
    mWindow.part("Gain").states.isEnabled = true;
    mWindow.isWilling = false;
    EXPECT_EQ(set(gain, kValueFace, "CurrentValue", "0.0"), kInvalidArgs);
    EXPECT_THAT(mWindow.notes, ElementsAre("Gain = 0.000000"));
}

TEST_F(AccessBridgeTest, AValueCanBeTyped) {
    open();
    const std::string gain = pathOf("Gain");
    EXPECT_EQ(ask(gain, kEditableFace, "SetTextContents", "('2 µs',)"), "(true,)");
    EXPECT_THAT(mWindow.notes, ElementsAre("Gain = \"2 µs\""));
    EXPECT_EQ(get(gain, kTextFace, "CharacterCount"), "(<4>,)");
    EXPECT_EQ(get(gain, kTextFace, "CaretOffset"), "(<0>,)");
    EXPECT_EQ(ask(gain, kTextFace, "GetText", "(0, -1)"), "('2 µs',)");
    EXPECT_EQ(ask(gain, kTextFace, "GetText", "(2, 3)"), "('µ',)");
    EXPECT_EQ(ask(gain, kTextFace, "GetText", "(3, 99)"), "('s',)");
    EXPECT_EQ(ask(gain, kTextFace, "GetText", "(9, 2)"), "('',)");
    EXPECT_EQ(ask(gain, kTextFace, "GetNSelections"), "(0,)");
    mWindow.isWilling = false;
    EXPECT_EQ(ask(gain, kEditableFace, "SetTextContents", "('loud',)"), "(false,)");
    EXPECT_EQ(ask(gain, kTextFace, "GetText", "(0, -1)"), "('2 µs',)");
}

TEST_F(AccessBridgeTest, AButtonCanBePressed) {
    open();
    const std::string high = pathOf("HP");
    EXPECT_EQ(get(high, kActionFace, "NActions"), "(<1>,)");
    EXPECT_EQ(ask(high, kActionFace, "GetActions"), "([('toggle', '', '')],)");
    EXPECT_EQ(ask(high, kActionFace, "GetName", "(0,)"), "('toggle',)");
    EXPECT_EQ(ask(high, kActionFace, "GetDescription", "(0,)"), "('',)");
    EXPECT_EQ(ask(high, kActionFace, "DoAction", "(0,)"), "(true,)");
    EXPECT_TRUE(mWindow.part("HP").states.isChecked);
    EXPECT_EQ(ask(high, kActionFace, "DoAction", "(1,)"), kInvalidArgs);
    EXPECT_EQ(ask(high, kActionFace, "GetName", "(-1,)"), kInvalidArgs);
    mWindow.part("HP").states.isEnabled = false;
    EXPECT_EQ(ask(high, kActionFace, "DoAction", "(0,)"), "(false,)");
    EXPECT_THAT(mWindow.notes, ElementsAre("HP pressed"));
}

TEST_F(AccessBridgeTest, FocusGoesWhereItCan) {
    open();
    EXPECT_EQ(ask(pathOf("Gain"), kComponentFace, "GrabFocus"), "(true,)");
    EXPECT_EQ(ask(pathOf("HP"), kComponentFace, "GrabFocus"), "(false,)");
    EXPECT_THAT(mWindow.notes, ElementsAre("Gain focused"));
}

TEST_F(AccessBridgeTest, PartsHaveTheirPlaces) {
    open();
    const std::string gain = pathOf("Gain");
    EXPECT_EQ(ask(gain, kComponentFace, "GetExtents", "(uint32 0,)"), "((110, 220, 40, 40),)");
    EXPECT_EQ(ask(gain, kComponentFace, "GetExtents", "(uint32 1,)"), "((20, 70, 40, 40),)");
    EXPECT_EQ(ask(gain, kComponentFace, "GetExtents", "(uint32 2,)"), "((10, 20, 40, 40),)");
    EXPECT_EQ(ask(gain, kComponentFace, "GetExtents", "(uint32 3,)"), kInvalidArgs);
    EXPECT_EQ(ask(pathOf("window"), kComponentFace, "GetExtents", "(uint32 2,)"), "((90, 150, 320, 200),)");
    EXPECT_EQ(ask(gain, kComponentFace, "GetPosition", "(uint32 1,)"), "(20, 70)");
    EXPECT_EQ(ask(gain, kComponentFace, "GetSize"), "(40, 40)");
    EXPECT_EQ(ask(gain, kComponentFace, "GetLayer"), "(3,)");
    EXPECT_EQ(ask(pathOf("window"), kComponentFace, "GetLayer"), "(7,)");
    EXPECT_EQ(ask(gain, kComponentFace, "GetMDIZOrder"), "(0,)");
    EXPECT_EQ(ask(gain, kComponentFace, "GetAlpha"), "(1.0,)");
    EXPECT_EQ(ask(gain, kComponentFace, "Contains", "(110, 220, uint32 0)"), "(true,)");
    EXPECT_EQ(ask(gain, kComponentFace, "Contains", "(150, 220, uint32 0)"), "(false,)");
    EXPECT_EQ(ask(gain, kComponentFace, "Contains", "(20, 70, uint32 1)"), "(true,)");
    const std::string at = "(('" + mName + "', '";
    const std::string window = pathOf("window");
    EXPECT_EQ(ask(window, kComponentFace, "GetAccessibleAtPoint", "(149, 259, uint32 0)"),
              at + gain + "'),)");
    EXPECT_EQ(ask(window, kComponentFace, "GetAccessibleAtPoint", "(59, 109, uint32 1)"), at + gain + "'),)");
    EXPECT_EQ(ask(window, kComponentFace, "GetAccessibleAtPoint", "(150, 260, uint32 0)"),
              at + pathOf("panel") + "'),)");
    EXPECT_EQ(ask(window, kComponentFace, "GetAccessibleAtPoint", "(0, 0, uint32 0)"),
              "(('', '/org/a11y/atspi/null'),)");
    mWindow.part("Gain").states.isShowing = false;
    EXPECT_EQ(ask(window, kComponentFace, "GetAccessibleAtPoint", "(149, 259, uint32 0)"),
              at + pathOf("panel") + "'),)");
}

TEST_F(AccessBridgeTest, TheCacheHasEveryPart) {
    open();
    const std::string items = ask("/org/a11y/atspi/cache", "org.a11y.atspi.Cache", "GetItems");
    const std::string application = "('" + mName + "', '" + rootPath() + "')";
    const std::string gain = "('" + mName + "', '" + pathOf("Gain") + "')";
    const std::string panel = "('" + mName + "', '" + pathOf("panel") + "')";
    EXPECT_THAT(items, StartsWith("([(" + application + ", " + application + ", "));
    EXPECT_THAT(items, HasSubstr("(" + gain + ", " + application + ", " + panel +
                                 ", 0, 0, ['org.a11y.atspi.Accessible', 'org.a11y.atspi.Component', "
                                 "'org.a11y.atspi.Value', 'org.a11y.atspi.Text', "
                                 "'org.a11y.atspi.EditableText'], 'Gain', 15, 'How loud it is.', ["));
    for (const char* id : {"window", "panel", "HP", "meter", "message"}) {
        EXPECT_THAT(items, HasSubstr("(('" + mName + "', '" + pathOf(id) + "'), "));
    }
}

TEST_F(AccessBridgeTest, WrongQuestionsAreRefused) {
    open();
    const std::string gain = pathOf("Gain");
    const std::string folder = "/org/a11y/atspi/accessible";
    EXPECT_EQ(ask(folder + "/99", kAccessibleFace, "GetRole"), kUnknownMethod);
    EXPECT_EQ(ask(folder + "/1x", kAccessibleFace, "GetRole"), kUnknownMethod);
    EXPECT_EQ(ask(folder + "/99999999999999999999", kAccessibleFace, "GetRole"), kUnknownMethod);
    EXPECT_EQ(ask(folder, kAccessibleFace, "GetRole"), kUnknownMethod);
    EXPECT_EQ(ask(folder + "/1/2", kAccessibleFace, "GetRole"), kUnknownMethod);
    EXPECT_EQ(ask("/", kAccessibleFace, "GetRole"), kUnknownMethod);
    EXPECT_EQ(ask(gain, kAccessibleFace, "GetRole", "(1,)"), kInvalidArgs);
    EXPECT_EQ(ask(gain, kAccessibleFace, "GetChildAtIndex", "('one',)"), kInvalidArgs);
    EXPECT_EQ(ask(gain, kAccessibleFace, "Sing"), kUnknownMethod);
    EXPECT_EQ(ask(gain, "org.a11y.atspi.Image", "GetImageSize"), kUnknownMethod);
    EXPECT_EQ(ask(gain, kActionFace, "DoAction", "(0,)"), kUnknownMethod) << "a knob has no action";
    EXPECT_EQ(get(gain, kAccessibleFace, "Colour"), kInvalidArgs);
    EXPECT_EQ(get(pathOf("HP"), kValueFace, "CurrentValue"), kInvalidArgs) << "a switch has no range";
    EXPECT_EQ(get(gain, kAccessibleFace, "Name"), "(<'Gain'>,)") << "it still answers";
}

TEST_F(AccessBridgeTest, TextsThatAreNoUtf8AreMadeSo) {
    mWindow.part("Gain").name = "a\xFFz";
    mWindow.part("Gain").valueText = std::string("1\0 dB", 5);
    open();
    const std::string gain = pathOf("Gain");
    EXPECT_EQ(get(gain, kAccessibleFace, "Name"), "(<'a\uFFFDz'>,)");
    EXPECT_EQ(ask(gain, kTextFace, "GetText", "(0, -1)"), "('1\uFFFD dB',)");
}

} // namespace
} // namespace varno::test
