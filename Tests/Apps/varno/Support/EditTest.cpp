#include "Tests/Apps/varno/Support/EditTest.h"

#include "Tests/Support/Eventually.h"

namespace varno::test {

std::unique_ptr<Subprocess> EditTest::edit(const std::vector<std::string>& arguments) const {
    auto program = std::make_unique<Subprocess>(words(arguments), surroundings());
    EXPECT_TRUE(eventually([this] { return window() != XCB_WINDOW_NONE; }));
    return program;
}

Outcome EditTest::runEdit(const std::vector<std::string>& arguments) const {
    return run(words(arguments), surroundings());
}

std::string EditTest::refusedEdit(int status, const std::vector<std::string>& arguments) const {
    const Outcome outcome = runEdit(arguments);
    EXPECT_EQ(outcome.status, status);
    return onlyLine(outcome);
}

xcb_window_t EditTest::window() const {
    return windowIn(mPerson.screen().root);
}

// Of the windows on the screen, those of programs state what they do when they are closed. Some are within
// the frame of a window manager.
xcb_window_t EditTest::windowIn(xcb_window_t parent) const {
    for (const xcb_window_t candidate : mPerson.children(parent)) {
        if (!mPerson.isShown(candidate)) {
            continue;
        }
        const auto found = property(candidate, "WM_PROTOCOLS").empty() ? windowIn(candidate) : candidate;
        if (found != XCB_WINDOW_NONE) {
            return found;
        }
    }
    return XCB_WINDOW_NONE;
}

Place EditTest::corner() const {
    const auto cookie =
        xcb_translate_coordinates(mPerson.connection(), window(), mPerson.screen().root, 0, 0);
    const XReply<xcb_translate_coordinates_reply_t> reply(
        xcb_translate_coordinates_reply(mPerson.connection(), cookie, nullptr));
    return reply ? Place{reply->dst_x, reply->dst_y} : Place{};
}

std::string EditTest::property(xcb_window_t window, const std::string& name) const {
    constexpr std::uint32_t kMostWords = 1U << 20;
    const auto cookie = xcb_get_property(mPerson.connection(), 0, window, atom(name),
                                         XCB_GET_PROPERTY_TYPE_ANY, 0, kMostWords);
    const XReply<xcb_get_property_reply_t> reply(
        xcb_get_property_reply(mPerson.connection(), cookie, nullptr));
    return reply ? std::string(static_cast<const char*>(xcb_get_property_value(reply.get())),
                               static_cast<std::size_t>(xcb_get_property_value_length(reply.get())))
                 : std::string();
}

void EditTest::close() const {
    xcb_client_message_event_t message{};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = window();
    message.type = atom("WM_PROTOCOLS");
    message.data.data32[0] = atom("WM_DELETE_WINDOW");
    xcb_send_event(mPerson.connection(), 0, message.window, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&message));
    mPerson.synchronise();
}

void EditTest::tap(xcb_keysym_t key, const std::vector<xcb_keysym_t>& held) const {
    mPerson.giveFocus(window());
    mKeyboard.tap(key, held);
}

std::string EditTest::bundle(const std::string& name) {
    return std::string(VARNO_FIXTURE_BUNDLES) + '/' + name + ".aaxplugin";
}

std::vector<std::string> EditTest::words(const std::vector<std::string>& arguments) const {
    // No test plays sound on the machine that runs it.
    std::vector<std::string> words = varnoWords({"edit", "--sound", "off"});
    words.insert(words.end(), arguments.begin(), arguments.end());
    return words;
}

Surroundings EditTest::surroundings() const {
    return {.folder = mFolder.path(),
            .environment = {"DISPLAY=" + mServer.display(), "VARNO_MODULE=" + bundle("Fixture"),
                            "XDG_DATA_HOME=" + path("data"), "XDG_CONFIG_HOME=" + path("config"),
                            "GDK_SCALE=", "JACK_DEFAULT_SERVER=varno-no-server", "PULSE_SERVER=unix:/nowhere",
                            "ALSA_CONFIG_PATH=/nowhere"}};
}

xcb_atom_t EditTest::atom(const std::string& name) const {
    const auto cookie =
        xcb_intern_atom(mPerson.connection(), 0, static_cast<std::uint16_t>(name.size()), name.c_str());
    const XReply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(mPerson.connection(), cookie, nullptr));
    EXPECT_TRUE(reply) << "the X server does not answer";
    return reply ? reply->atom : xcb_atom_t{XCB_ATOM_NONE};
}

} // namespace varno::test
