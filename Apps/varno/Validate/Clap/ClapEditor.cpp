#include "Validate/Clap/ClapEditor.h"

#include <utility>

namespace varno::validate {
namespace {

const clap_plugin_gui_t* guiOf(const clap_plugin_t* plugin) {
    return static_cast<const clap_plugin_gui_t*>(plugin->get_extension(plugin, CLAP_EXT_GUI));
}

} // namespace

std::string ClapEditor::obstacleOf(const clap_plugin_t* plugin) {
    const clap_plugin_gui_t* const gui = guiOf(plugin);
    if (gui == nullptr) {
        return "the plug-in has no window";
    }
    return gui->is_api_supported(plugin, CLAP_WINDOW_API_X11, false)
               ? ""
               : "the plug-in has no window within one of X11";
}

ClapEditor::ClapEditor(ClapHost& host, const clap_plugin_t* plugin, EditorSetup setup, Calls calls)
    : mHost(host),
      mPlugin(plugin),
      mGui(guiOf(plugin)),
      mSetup(std::move(setup)),
      mCalls(std::move(calls)) {
    if (!mGui->create(plugin, CLAP_WINDOW_API_X11, false)) {
        throw PluginError("gui.create was refused");
    }
    mHost.follow(plugin, [this](EditorSize size) {
        mSetup.onEvent({.kind = EditorEvent::Kind::kResize, .width = size.width, .height = size.height});
    });
    mGui->set_scale(plugin, mSetup.scale);
    clap_window_t parent{};
    parent.api = CLAP_WINDOW_API_X11;
    parent.x11 = mSetup.window;
    const char* const refused = !mGui->set_parent(plugin, &parent) ? "gui.set_parent was refused"
                                : !mGui->show(plugin)              ? "gui.show was refused"
                                                                   : nullptr;
    if (refused != nullptr) {
        close();
        throw PluginError(refused);
    }
}

void ClapEditor::close() {
    if (const clap_plugin_t* const plugin = std::exchange(mPlugin, nullptr)) {
        mGui->destroy(plugin);
        mHost.follow(plugin, {});
        mCalls.answer(true);
        deliver();
        mCalls.onClosed();
    }
}

// These calls close nothing: the format leaves that open.
void ClapEditor::idle() {
    if (mPlugin != nullptr) {
        mHost.loop().turn();
        mCalls.answer(false);
        deliver();
    }
}

void ClapEditor::deliver() {
    for (const EditorEvent& event : mCalls.takeEvents()) {
        mSetup.onEvent(event);
    }
}

std::optional<EditorSize> ClapEditor::size() const {
    std::uint32_t width = 0;
    std::uint32_t height = 0;
    if (mPlugin == nullptr || !mGui->get_size(mPlugin, &width, &height)) {
        return std::nullopt;
    }
    return EditorSize{static_cast<int>(width), static_cast<int>(height)};
}

} // namespace varno::validate
