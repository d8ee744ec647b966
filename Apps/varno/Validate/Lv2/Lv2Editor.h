/// The window of an LV2 plug-in.
#ifndef VARNO_APPS_VARNO_VALIDATE_LV2_LV2EDITOR_H
#define VARNO_APPS_VARNO_VALIDATE_LV2_LV2EDITOR_H

#include "Validate/Lv2/HostSide.h"
#include "Validate/Lv2/Lv2Window.h"
#include "Validate/Lv2/Ports.h"
#include "Validate/Plugin.h"

#include <cstdint>
#include <lv2/ui/ui.h>
#include <memory>
#include <mutex>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace varno::validate {

/// What the plug-in has done against the rules, each once. [any]
class Complaints {
public:
    void add(const std::string& text);
    std::vector<std::string> take();

private:
    std::mutex mMutex;
    std::vector<std::string> mTexts;
};

/// The ports of an instance for its window. [main]
class EditorPorts {
public:
    virtual const PortList& ports() const = 0;
    /// Of the control ports, by port.
    virtual std::vector<float> shownValues() = 0;
    /// In force from the next buffer on.
    virtual void write(std::uint32_t port, float value) = 0;
    /// The window is closed.
    virtual void forget() = 0;

protected:
    ~EditorPorts() = default;
};

/// Within the caller's window. It lives on without its instance, which it knows by its ports alone. [main]
class Lv2Editor final : public PluginEditor {
public:
    /// Of the host around it.
    struct Host {
        UriNumbers& numbers;
        Complaints& complaints;
        std::string plugin;
        LV2_Handle instance;
        float rateHz = 0.0F;
    };

    /// @param window outlives this object @throws PluginError where it does not open
    Lv2Editor(const Lv2Window& window, const Host& host, EditorPorts& ports, EditorSetup setup);
    ~Lv2Editor() override;

    void idle() override;
    std::optional<EditorSize> size() const override { return mSize; }
    void close() override;
    void instanceEnds() { mPorts = nullptr; }

    /// Whether a window that requires this feature can be opened.
    static bool offers(const std::string& feature);

private:
    struct Features;
    struct Calls;
    struct ClosesLibrary {
        void operator()(void* library) const;
    };

    const LV2UI_Descriptor* findDescriptor() const;
    void tellValues();
    void written(std::uint32_t port, std::uint32_t size, std::uint32_t protocol, const void* value);
    void touched(std::uint32_t port, bool isTouched);
    int resized(int width, int height);
    std::optional<std::size_t> parameterOf(std::uint32_t port) const;

    const Lv2Window& mWindow;
    Complaints& mComplaints;
    EditorPorts* mPorts; ///< Null without an instance.
    PortList mPortList;  ///< Of it.
    EditorSetup mSetup;
    std::uintptr_t mNumber; ///< By which the window knows its host; never that of another.
    std::unique_ptr<void, ClosesLibrary> mLibrary;
    const LV2UI_Descriptor* mDescriptor;
    std::unique_ptr<Features> mFeatures;
    LV2UI_Handle mHandle = nullptr; ///< Null once closed.
    const LV2UI_Idle_Interface* mIdle = nullptr;
    std::vector<std::optional<float>> mTold; ///< By port.
    std::optional<EditorSize> mSize;
    bool mHasEnded = false; ///< As it has stated itself.
};

} // namespace varno::validate

#endif
