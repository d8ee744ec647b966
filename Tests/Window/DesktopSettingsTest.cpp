#include "Window/DesktopSettings.h"

#include "Tests/Window/SettingsBytes.h"
#include "Tests/Window/WindowFixture.h"

#include <optional>

namespace varno::test {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int32_t kPlainDpi = 96 * 1024;

class DesktopSettingsTest : public WindowFixture {
protected:
    void setResources(const std::string& resources) {
        xcb_change_property(mPerson.connection(), XCB_PROP_MODE_REPLACE, root(), XCB_ATOM_RESOURCE_MANAGER,
                            XCB_ATOM_STRING, 8, static_cast<std::uint32_t>(resources.size()),
                            resources.data());
        settle();
    }

    void setSettings(xcb_window_t manager, std::int32_t dpi) {
        const std::string bytes = SettingsBytes().integer("Xft/DPI", dpi).bytes();
        const auto property = mConnection.atom("_XSETTINGS_SETTINGS");
        xcb_change_property(mPerson.connection(), XCB_PROP_MODE_REPLACE, manager, property, property, 8,
                            static_cast<std::uint32_t>(bytes.size()), bytes.data());
    }

    // As a manager does when it starts.
    void manage(xcb_window_t manager) {
        const auto selection = mConnection.atom("_XSETTINGS_S0");
        xcb_set_selection_owner(mPerson.connection(), manager, selection, XCB_CURRENT_TIME);
        xcb_client_message_event_t message{};
        message.response_type = XCB_CLIENT_MESSAGE;
        message.format = 32;
        message.window = root();
        message.type = mConnection.atom("MANAGER");
        message.data.data32[1] = selection;
        message.data.data32[2] = manager;
        xcb_send_event(mPerson.connection(), 0, root(), XCB_EVENT_MASK_STRUCTURE_NOTIFY,
                       reinterpret_cast<const char*>(&message));
        settle();
    }

    void watch(std::optional<std::string> gdkScale = {}) {
        mSettings.emplace(mConnection, std::move(gdkScale));
        mSettings->setScaleHandler([this](double scale) { mScales.push_back(scale); });
        settle();
    }

    xcb_window_t root() const { return mPerson.screen().root; }

    std::vector<double> mScales;
    std::optional<DesktopSettings> mSettings;
};

TEST_F(DesktopSettingsTest, TheScaleFollowsTheResources) {
    setResources("Xft.dpi:\t144\n");
    watch();
    EXPECT_EQ(mSettings->scale(), 1.5);
    setResources("Xft.dpi:\t144\n*background:\tgrey\n"); // the same
    EXPECT_THAT(mScales, IsEmpty());
    setResources("Xft.dpi:\t192\n");
    EXPECT_EQ(mSettings->scale(), 2.0);
    EXPECT_THAT(mScales, ElementsAre(2.0));
}

TEST_F(DesktopSettingsTest, TheManagerGoesFirstFromItsStartToItsEnd) {
    setResources("Xft.dpi:\t144\n");
    watch();
    XWindow manager(mPerson, {0, 0, 1, 1});
    setSettings(manager.id(), 2 * kPlainDpi);
    manage(manager.id());
    EXPECT_THAT(mScales, ElementsAre(2.0));
    setSettings(manager.id(), 3 * kPlainDpi);
    settle();
    EXPECT_THAT(mScales, ElementsAre(2.0, 3.0));
    setResources("Xft.dpi:\t120\n");
    EXPECT_EQ(mSettings->scale(), 3.0);
    manager.destroy();
    settle();
    EXPECT_THAT(mScales, ElementsAre(2.0, 3.0, 1.25));
}

TEST_F(DesktopSettingsTest, AManagerIsFoundThatWasThereBefore) {
    XWindow manager(mPerson, {0, 0, 1, 1});
    setSettings(manager.id(), 2 * kPlainDpi);
    manage(manager.id());
    watch();
    EXPECT_EQ(mSettings->scale(), 2.0);
    XWindow other(mPerson, {0, 0, 1, 1}); // another takes its place
    setSettings(other.id(), kPlainDpi);
    manage(other.id());
    EXPECT_THAT(mScales, ElementsAre(1.0));
    setSettings(manager.id(), 3 * kPlainDpi);
    settle();
    EXPECT_THAT(mScales, ElementsAre(1.0));
}

TEST_F(DesktopSettingsTest, TheUsersOwnScaleStays) {
    watch("2");
    EXPECT_EQ(mSettings->scale(), 2.0);
    setResources("Xft.dpi:\t144\n");
    EXPECT_EQ(mSettings->scale(), 2.0);
    EXPECT_THAT(mScales, IsEmpty());
}

} // namespace
} // namespace varno::test
