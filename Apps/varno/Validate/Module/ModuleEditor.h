/// The editor of a module.
#ifndef VARNO_APPS_VARNO_VALIDATE_MODULE_MODULEEDITOR_H
#define VARNO_APPS_VARNO_VALIDATE_MODULE_MODULEEDITOR_H

#include "Host/Editor.h"
#include "Host/HostAutomation.h"
#include "Host/Instance.h"
#include "Host/ViewContainer.h"
#include "Validate/Editors/HostLoop.h"
#include "Validate/Plugin.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace varno::validate {

class ModuleEditor;

/// What an instance and its open editor know of each other.
class EditorLink {
public:
    /// Null while none is open. [main]
    ModuleEditor* editor() const { return mEditor.load(); }
    void set(ModuleEditor* editor) { mEditor.store(editor); }

    /// A value that has come into force with a buffer, for the editor to show. [any]
    void showLater(std::size_t parameter, double value) {
        const std::lock_guard lock(mMutex);
        mValues.push_back({parameter, value});
    }
    /// [main]
    std::vector<BufferValue> takeValues() {
        const std::lock_guard lock(mMutex);
        return std::exchange(mValues, {});
    }

private:
    std::atomic<ModuleEditor*> mEditor{nullptr};
    std::mutex mMutex;
    std::vector<BufferValue> mValues;
};

/// In a container with a desktop around it: scale, timers and descriptors. [main]
class ModuleEditor final : public PluginEditor, private Desktop, private AutomationListener {
public:
    /// @param instance,parameters,link outlive this object, or it is closed before they end
    /// @throws PluginError, HostError
    ModuleEditor(Instance& instance, const std::vector<Parameter>& parameters, EditorLink& link,
                 EditorSetup setup);
    ~ModuleEditor() override;

    void idle() override;
    std::optional<EditorSize> size() const override;
    void close() override;

private:
    double scale() const override { return mSetup.scale; }
    void watch(int descriptor, const void* owner, Wake wake) override;
    void unwatch(int descriptor, const void* owner) override;
    void startTimer(std::chrono::milliseconds period, const void* owner, Wake wake) override;
    void stopTimer(const void* owner) override;
    void valueRequested(const std::string& id, double normalized) override;
    void touched(const std::string& id) override;
    void released(const std::string& id) override;

    void end();
    void tell(EditorEvent::Kind kind, const std::string& id, double value = 0.0);

    std::thread::id mMainThread = std::this_thread::get_id();
    Instance* mInstance; ///< Null once ended.
    const std::vector<Parameter>& mParameters;
    EditorLink& mLink;
    EditorSetup mSetup;
    HostLoop mLoop;
    ACFPtr<ViewContainer> mContainer;
    std::unique_ptr<Editor> mEditor;
    bool mIsInIdle = false;
    bool mIsClosed = false;
};

} // namespace varno::validate

#endif
