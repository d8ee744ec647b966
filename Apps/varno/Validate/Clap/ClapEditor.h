/// The window of a CLAP plug-in.
#ifndef VARNO_APPS_VARNO_VALIDATE_CLAP_CLAPEDITOR_H
#define VARNO_APPS_VARNO_VALIDATE_CLAP_CLAPEDITOR_H

#include "CLAP/Clap/Gui.h"
#include "Validate/Clap/ClapHost.h"
#include "Validate/Plugin.h"

#include <functional>
#include <optional>
#include <vector>

namespace varno::validate {

/// Within the caller's window. It ends with its plug-in at the latest. [main]
class ClapEditor final : public PluginEditor {
public:
    /// What the instance does for it.
    struct Calls {
        /// Has the plug-in called where it has asked for that, by on_main_thread() and flush(), or in any
        /// case.
        std::function<void(bool inAnyCase)> answer;
        /// What has come with buffers and flushes since the last call.
        std::function<std::vector<EditorEvent>()> takeEvents;
        std::function<void()> onClosed;
    };

    /// @throws PluginError naming the call that was refused
    ClapEditor(ClapHost& host, const clap_plugin_t* plugin, EditorSetup setup, Calls calls);
    ~ClapEditor() override { ClapEditor::close(); }

    /// Why a plug-in has no window of this kind; empty where it has one.
    static std::string obstacleOf(const clap_plugin_t* plugin);

    void idle() override;
    std::optional<EditorSize> size() const override;
    void close() override;
    /// The plug-in is destroyed with its window.
    void pluginEnds() { mPlugin = nullptr; }

private:
    void deliver();

    ClapHost& mHost;
    const clap_plugin_t* mPlugin; ///< Null once closed.
    const clap_plugin_gui_t* mGui;
    EditorSetup mSetup;
    Calls mCalls;
};

} // namespace varno::validate

#endif
