// Settings copied to and pasted from other programs.
#include "Tests/Integration/Editor/EditorTest.h"

#include "DemoGain_PresetText.h"
#include "Tests/Support/FakeInput.h"
#include "Tests/Support/LocaleScope.h"

#include <X11/keysym.h>

#include <clocale>

namespace varno::test {
namespace {

constexpr char kCopied[] = "Preset to Clipboard";
constexpr char kPasted[] = "Preset From Clipboard";
constexpr char kFailed[] = "Failed From Clipboard";

// What a value loses as a float and as ten digits.
constexpr double kPrecision = 1e-7;

// The longest text that the editor accepts, in bytes.
constexpr std::size_t kLargest = 1U << 20U;

class EditorClipboard : public OneEditorTest {
protected:
    EditorClipboard() { client.setClipboardOwner(XCB_WINDOW_NONE); }

    // Has another program own the clipboard with a text.
    std::unique_ptr<Subprocess> offer(const std::string& text, const std::string& target = "UTF8_STRING") {
        client.setClipboardOwner(XCB_WINDOW_NONE);
        // Quiet: it stays in the foreground, so that it ends with the object.
        auto source = std::make_unique<Subprocess>(
            std::vector<std::string>{"xclip", "-in", "-quiet", "-selection", "clipboard", "-target", target},
            Surroundings{.input = text});
        EXPECT_TRUE(loop.await([&] { return client.clipboardOwner() != XCB_WINDOW_NONE; }));
        return source;
    }
    // The text that another program receives, while this one runs its loop.
    std::string textForOthers() {
        Subprocess reader({"xclip", "-out", "-selection", "clipboard"});
        EXPECT_TRUE(loop.await([&] { return reader.status().has_value(); }))
            << "the clipboard's owner does not answer";
        return reader.out();
    }
    void copy() { click(*window, "PR1K"); }
    void paste() { click(*window, "PR2K"); }
    static std::string textOf(Instance& which) { return DemoGain_PresetText::Write(which.dataModel()); }

    void expectNear(const ParameterValues& expected, const ParameterValues& seen) {
        for (const auto& [id, value] : expected) {
            EXPECT_NEAR(seen.at(id), value, kPrecision) << id;
        }
    }

    std::mt19937 random{20260202};
};

TEST_F(EditorClipboard, givesTheSettingsToOtherPrograms) {
    for (int i = 0; i < 3; ++i) {
        automate(*instance, randomValues(random));
        copy();
        EXPECT_TRUE(says(*window, kCopied));
        EXPECT_EQ(textForOthers(), textOf(*instance));
    }
    EXPECT_EQ(textForOthers().substr(0, 20), "Varno-S 030001\nGain ");
}

// No clipboard manager runs here.
TEST_F(EditorClipboard, keepsACopiedPresetAfterTheViewIsClosed) {
    automate(*instance, randomValues(random));
    copy();
    const std::string copied = textOf(*instance);
    window->editor().setContainer(nullptr);
    EXPECT_EQ(textForOthers(), copied);
    EXPECT_EQ(textForOthers(), copied);
}

TEST_F(EditorClipboard, takesTheSettingsOfOtherPrograms) {
    const auto other = makeInstance(module());
    for (int i = 0; i < 3; ++i) {
        automate(*other, randomValues(random));
        const auto source = offer(textOf(*other));
        paste();
        EXPECT_TRUE(says(*window, kPasted));
        expectNear(valuesOf(*other), valuesOf(*instance));
        EXPECT_TRUE(shows(*window, "Mix", knobPicture(instance->normalized("Mix"))));
    }
}

TEST_F(EditorClipboard, takesTextOfThePlainKindToo) {
    const auto other = makeInstance(module());
    automate(*other, randomValues(random));
    const auto source = offer(textOf(*other), "STRING");
    paste();
    expectNear(valuesOf(*other), valuesOf(*instance));
}

TEST_F(EditorClipboard, copyAndPasteComeBackToTheSameSettings) {
    automate(*instance, randomValues(random));
    const ParameterValues before = valuesOf(*instance);
    copy();
    automate(*instance, randomValues(random));
    paste();
    EXPECT_TRUE(says(*window, kPasted));
    expectNear(before, valuesOf(*instance));
}

TEST_F(EditorClipboard, joinsTwoInstances) {
    const auto other = makeInstance(module());
    auto otherWindow = show(*other, {0, viewArea().height});
    automate(*instance, randomValues(random));
    copy();
    click(*otherWindow, "PR2K");
    EXPECT_TRUE(says(*otherWindow, kPasted));
    expectNear(valuesOf(*instance), valuesOf(*other));
    automate(*other, randomValues(random));
    click(*otherWindow, "PR1K");
    otherWindow->close();
    paste();
    expectNear(valuesOf(*other), valuesOf(*instance));
    EXPECT_EQ(textForOthers(), textOf(*other)) << "while any editor is open";
}

TEST_F(EditorClipboard, refusesWhatIsNoPreset) {
    const std::string text = textOf(*instance);
    const std::string cut = text.substr(0, text.rfind(' '));
    const std::string old = "Varno-S 030000" + text.substr(text.find('\n'));
    for (const std::string& bad : {std::string("hello"), cut, old, "Varno-S x" + text, std::string("\n")}) {
        automate(*instance, randomValues(random));
        const ParameterValues before = valuesOf(*instance);
        const auto source = offer(bad);
        paste();
        EXPECT_EQ(valuesOf(*instance), before) << bad;
        EXPECT_TRUE(says(*window, kFailed)) << bad;
        click(*window, "UK");
        EXPECT_TRUE(says(*window, "UK Mode"));
    }
}

TEST_F(EditorClipboard, takesALaterVersionAndForeignLabels) {
    automate(*instance, randomValues(random));
    const ParameterValues aim = valuesOf(*instance);
    std::string text = textOf(*instance);
    text.replace(0, 14, "Another 040000");
    text.replace(text.find("Volume"), 6, "Gain");
    automate(*instance, randomValues(random));
    const auto source = offer(text);
    paste();
    expectNear(aim, valuesOf(*instance));
}

TEST_F(EditorClipboard, limitsValuesOutsideOfTheRange) {
    std::string text = "Varno-S 030001";
    for (int i = 0; i < 13; ++i) {
        text += i % 2 == 0 ? " x 7" : " x -1e30";
    }
    const auto source = offer(text);
    paste();
    EXPECT_TRUE(says(*window, kPasted));
    EXPECT_EQ(instance->normalized("Gain"), 1.0);
    EXPECT_EQ(instance->normalized("Volume"), 0.0);
}

TEST_F(EditorClipboard, withoutATextChangesNothing) {
    const ParameterValues before = valuesOf(*instance);
    paste();
    const auto source = offer("not a text", "image/png");
    paste();
    awaitDrawing(*window, *instance);
    EXPECT_TRUE(says(*window, "---"));
    EXPECT_EQ(valuesOf(*instance), before);
}

TEST_F(EditorClipboard, copesWithALargeText) {
    const ParameterValues before = valuesOf(*instance);
    automate(*instance, randomValues(random));
    const ParameterValues aim = valuesOf(*instance);
    const std::string preset = textOf(*instance) + "\n";
    automate(*instance, before);
    {
        const auto source = offer(std::string(kLargest, 'x'));
        paste();
        EXPECT_TRUE(says(*window, kFailed));
        EXPECT_EQ(valuesOf(*instance), before);
    }
    {
        const auto source = offer(preset + std::string(kLargest, 'x'));
        paste();
        EXPECT_EQ(valuesOf(*instance), before) << "larger than what is taken";
    }
    const auto source = offer(preset + std::string(kLargest - preset.size(), 'x'));
    paste();
    EXPECT_TRUE(says(*window, kPasted)) << "what follows the last value does not matter";
    expectNear(aim, valuesOf(*instance));
}

TEST_F(EditorClipboard, outlivesAnOwnerThatNeverAnswers) {
    const ParameterValues before = valuesOf(*instance);
    XWindow silent(client, {1000, 0, 10, 10});
    client.setClipboardOwner(silent.id());
    paste();
    silent.destroy();
    EXPECT_EQ(valuesOf(*instance), before);
    click(*window, "HP");
    EXPECT_EQ(instance->normalized("HP"), 1.0);
    EXPECT_TRUE(says(*window, "Hi Pass"));
}

TEST_F(EditorClipboard, copiesOncePerClickAndNotWhereTheHandLeft) {
    point(*window, "PR1K", {10, 10});
    press();
    EXPECT_TRUE(shows(*window, "PR1K", 1));
    drag(*window, "PR1K", {10, -60});
    EXPECT_TRUE(shows(*window, "PR1K", 0));
    release();
    EXPECT_EQ(client.clipboardOwner(), xcb_window_t{XCB_WINDOW_NONE});
    copy();
    EXPECT_NE(client.clipboardOwner(), xcb_window_t{XCB_WINDOW_NONE});
    EXPECT_TRUE(shows(*window, "PR1K", 0));
}

TEST_F(EditorClipboard, isReachedByKeysToo) {
    automate(*instance, randomValues(random));
    const ParameterValues before = valuesOf(*instance);
    click(*window, "UK"); // the editor has the keyboard after a click
    click(*window, "UK");
    automate(*instance, before);
    const Keyboard keyboard(client);
    keyboard.tap(XK_c, {XK_Control_L});
    EXPECT_TRUE(says(*window, kCopied));
    EXPECT_EQ(textForOthers(), textOf(*instance));
    automate(*instance, randomValues(random));
    keyboard.tap(XK_v, {XK_Control_L});
    EXPECT_TRUE(says(*window, kPasted));
    expectNear(before, valuesOf(*instance));
}

TEST_F(EditorClipboard, writesPointsWhereThePeopleWriteCommas) {
    automate(*instance, randomValues(random));
    const ParameterValues aim = valuesOf(*instance);
    const std::string text = textOf(*instance);
    {
        const LocaleScope german("de_DE");
        ASSERT_EQ(german.decimalPoint(), ",");
        copy();
        EXPECT_EQ(textForOthers(), text);
        automate(*instance, randomValues(random));
        paste();
        expectNear(aim, valuesOf(*instance));
        EXPECT_STREQ(std::setlocale(LC_ALL, nullptr), german.name().c_str()) << "not touched";
    }
}

} // namespace
} // namespace varno::test
