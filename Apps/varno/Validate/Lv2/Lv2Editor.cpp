#include "Validate/Lv2/Lv2Editor.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <dlfcn.h>
#include <iterator>
#include <lv2/atom/atom.h>
#include <lv2/data-access/data-access.h>
#include <lv2/instance-access/instance-access.h>
#include <lv2/log/log.h>
#include <lv2/options/options.h>
#include <lv2/parameters/parameters.h>
#include <map>

namespace varno::validate {
namespace {

constexpr float kUpdatesHz = 30.0F;

// Those whose data is made for each window, then those that are offered by being named.
constexpr const char* kOfferedToWindow[] = {LV2_UI__parent,
                                            LV2_UI__resize,
                                            LV2_UI__touch,
                                            LV2_UI__portMap,
                                            LV2_URID__map,
                                            LV2_URID__unmap,
                                            LV2_OPTIONS__options,
                                            LV2_LOG__log,
                                            LV2_INSTANCE_ACCESS_URI,
                                            LV2_UI__idleInterface,
                                            LV2_UI__fixedSize,
                                            LV2_UI__noUserResize,
                                            LV2_UI_PREFIX "makeResident"};

// The open windows by their numbers: one that is closed may still call, from a thread of its own.
struct OpenWindows {
    std::mutex mutex;
    std::map<std::uintptr_t, Lv2Editor*> windows;
    Complaints* complaints = nullptr; ///< Of the last one.
    std::uintptr_t last = 0;
};

OpenWindows& openWindows() {
    static OpenWindows open;
    return open;
}

std::uintptr_t addWindow(Lv2Editor* window, Complaints& complaints) {
    OpenWindows& open = openWindows();
    const std::lock_guard lock(open.mutex);
    open.complaints = &complaints;
    open.windows[++open.last] = window;
    return open.last;
}

Lv2Editor* findWindow(const void* number, const char* call) {
    OpenWindows& open = openWindows();
    const std::lock_guard lock(open.mutex);
    const auto found = open.windows.find(reinterpret_cast<std::uintptr_t>(number));
    if (found == open.windows.end()) {
        open.complaints->add(std::string(call) + " was called by a window that is closed");
        return nullptr;
    }
    return found->second;
}

} // namespace

void Complaints::add(const std::string& text) {
    const std::lock_guard lock(mMutex);
    if (std::ranges::find(mTexts, text) == mTexts.end()) {
        mTexts.push_back(text);
    }
}

std::vector<std::string> Complaints::take() {
    const std::lock_guard lock(mMutex);
    return std::exchange(mTexts, {});
}

void Lv2Editor::ClosesLibrary::operator()(void* library) const {
    ::dlclose(library);
}

// What a window has its host do.
struct Lv2Editor::Calls {
    static void write(LV2UI_Controller host, std::uint32_t port, std::uint32_t size, std::uint32_t protocol,
                      const void* value) {
        if (Lv2Editor* const window = findWindow(host, "the function that writes")) {
            window->written(port, size, protocol, value);
        }
    }
    static void touch(LV2UI_Feature_Handle host, std::uint32_t port, bool isTouched) {
        if (Lv2Editor* const window = findWindow(host, "touch")) {
            window->touched(port, isTouched);
        }
    }
    static int resize(LV2UI_Feature_Handle host, int width, int height) {
        Lv2Editor* const window = findWindow(host, "ui_resize");
        return window == nullptr ? 1 : window->resized(width, height);
    }
    static std::uint32_t portIndex(LV2UI_Feature_Handle host, const char* symbol) {
        if (const Lv2Editor* const window = findWindow(host, "port_index")) {
            for (const Port& port : window->mPortList.ports) {
                if (port.symbol == symbol) {
                    return port.index;
                }
            }
        }
        return LV2UI_INVALID_PORT_INDEX;
    }
};

// They stay as long as the call that makes the window, and options and functions as long as the window.
struct Lv2Editor::Features {
    Features(const Host& host, const EditorSetup& setup, void* number)
        : resize{number, Calls::resize},
          touch{number, Calls::touch},
          portMap{number, Calls::portIndex},
          log(silentLog()),
          rateHz(host.rateHz),
          scale(static_cast<float>(setup.scale)) {
        const auto option = [&](const char* key, const float& value) {
            return LV2_Options_Option{LV2_OPTIONS_INSTANCE,
                                      0,
                                      host.numbers.numberOf(key),
                                      sizeof value,
                                      host.numbers.numberOf(LV2_ATOM__Float),
                                      &value};
        };
        options = {option(LV2_PARAMETERS__sampleRate, rateHz), option(LV2_UI__updateRate, updatesHz),
                   option(LV2_UI__scaleFactor, scale),
                   LV2_Options_Option{LV2_OPTIONS_INSTANCE, 0, 0, 0, 0, nullptr}};
        // A window's number is passed as a pointer.
        // NOLINTNEXTLINE(performance-no-int-to-ptr)
        auto* const parent = reinterpret_cast<void*>(std::uintptr_t{setup.window});
        void* const data[] = {
            parent,         &resize, &touch,       &portMap, &host.numbers.map(), &host.numbers.unmap(),
            options.data(), &log,    host.instance};
        for (std::size_t i = 0; i < std::size(kOfferedToWindow); ++i) {
            table.at(i) = {kOfferedToWindow[i], i < std::size(data) ? data[i] : nullptr};
            list.at(i) = &table.at(i);
        }
    }

    LV2UI_Resize resize;
    LV2UI_Touch touch;
    LV2UI_Port_Map portMap;
    LV2_Log_Log log;
    float rateHz;
    float updatesHz = kUpdatesHz;
    float scale;
    std::array<LV2_Options_Option, 4> options{};
    std::array<LV2_Feature, std::size(kOfferedToWindow)> table{};
    std::array<const LV2_Feature*, std::size(kOfferedToWindow) + 1> list{}; ///< Ends with null.
};

Lv2Editor::Lv2Editor(const Lv2Window& window, const Host& host, EditorPorts& ports, EditorSetup setup)
    : mWindow(window),
      mComplaints(host.complaints),
      mPorts(&ports),
      mPortList(ports.ports()),
      mSetup(std::move(setup)),
      mNumber(addWindow(this, host.complaints)),
      mLibrary(::dlopen(window.binary.c_str(), RTLD_NOW | RTLD_LOCAL)),
      mDescriptor(findDescriptor()),
      mTold(mPortList.ports.size()) {
    // NOLINTNEXTLINE(performance-no-int-to-ptr): the host's own number, which nothing dereferences
    void* const number = reinterpret_cast<void*>(mNumber);
    mFeatures = std::make_unique<Features>(host, mSetup, number);
    LV2UI_Widget widget = nullptr;
    if (mDescriptor != nullptr) {
        mHandle = mDescriptor->instantiate(mDescriptor, host.plugin.c_str(), window.bundle.c_str(),
                                           Calls::write, number, &widget, mFeatures->list.data());
    }
    if (mHandle == nullptr) {
        const char* const error = mLibrary == nullptr ? ::dlerror() : nullptr;
        const std::lock_guard lock(openWindows().mutex);
        openWindows().windows.erase(mNumber);
        throw PluginError(error != nullptr ? error : "the window " + window.uri + " is not made");
    }
    if (mDescriptor != nullptr && mDescriptor->extension_data != nullptr) {
        mIdle = static_cast<const LV2UI_Idle_Interface*>(mDescriptor->extension_data(LV2_UI__idleInterface));
    }
    tellValues();
}

Lv2Editor::~Lv2Editor() {
    Lv2Editor::close();
}

const LV2UI_Descriptor* Lv2Editor::findDescriptor() const {
    void* const entry = mLibrary == nullptr ? nullptr : ::dlsym(mLibrary.get(), "lv2ui_descriptor");
    if (entry == nullptr) {
        return nullptr;
    }
    const auto descriptorAt = reinterpret_cast<LV2UI_DescriptorFunction>(entry);
    for (std::uint32_t index = 0; const LV2UI_Descriptor* const found = descriptorAt(index); ++index) {
        if (mWindow.uri == found->URI) {
            return found;
        }
    }
    return nullptr;
}

void Lv2Editor::close() {
    if (LV2UI_Handle handle = std::exchange(mHandle, nullptr)) {
        mDescriptor->cleanup(handle);
        {
            const std::lock_guard lock(openWindows().mutex);
            openWindows().windows.erase(mNumber);
        }
        if (mPorts != nullptr) {
            mPorts->forget();
        }
    }
}

void Lv2Editor::idle() {
    if (mHandle == nullptr || mHasEnded) {
        return;
    }
    tellValues();
    if (mIdle != nullptr) {
        mHasEnded = mIdle->idle(mHandle) != 0;
    }
}

// Values of control ports that it has not been told, or that have changed since.
void Lv2Editor::tellValues() {
    if (mPorts == nullptr || mDescriptor->port_event == nullptr) {
        return;
    }
    const std::vector<float> values = mPorts->shownValues();
    for (const Port& port : mPortList.ports) {
        const float value = values.at(port.index);
        std::optional<float>& told = mTold.at(port.index);
        if (port.kind == PortKind::kControl && told != value) {
            told = value;
            mDescriptor->port_event(mHandle, port.index, sizeof value, 0, &value);
        }
    }
}

std::optional<std::size_t> Lv2Editor::parameterOf(std::uint32_t port) const {
    const auto found = std::ranges::find(mPortList.parameterPorts, port);
    return found == mPortList.parameterPorts.end()
               ? std::nullopt
               : std::optional(static_cast<std::size_t>(found - mPortList.parameterPorts.begin()));
}

// Events, under another protocol, are for ports that have none here.
void Lv2Editor::written(std::uint32_t port, std::uint32_t size, std::uint32_t protocol, const void* value) {
    if (protocol != 0) {
        return;
    }
    const auto parameter = parameterOf(port);
    float number = 0.0F;
    if (!parameter || size != sizeof number || value == nullptr) {
        mComplaints.add("the window writes to port " + std::to_string(port) + ", which is no control input");
        return;
    }
    std::memcpy(&number, value, sizeof number);
    if (mPorts != nullptr) {
        mPorts->write(port, number);
    }
    mTold.at(port) = number;
    mSetup.onEvent(
        {.kind = EditorEvent::Kind::kValue, .parameter = *parameter, .value = static_cast<double>(number)});
}

void Lv2Editor::touched(std::uint32_t port, bool isTouched) {
    if (const auto parameter = parameterOf(port)) {
        mSetup.onEvent({.kind = isTouched ? EditorEvent::Kind::kTouch : EditorEvent::Kind::kRelease,
                        .parameter = *parameter});
    } else {
        mComplaints.add("the window touches port " + std::to_string(port) + ", which is no control input");
    }
}

int Lv2Editor::resized(int width, int height) {
    mSize = EditorSize{width, height};
    mSetup.onEvent({.kind = EditorEvent::Kind::kResize, .width = width, .height = height});
    return 0;
}

bool Lv2Editor::offers(const std::string& feature) {
    return std::ranges::find(kOfferedToWindow, feature) != std::end(kOfferedToWindow);
}

} // namespace varno::validate
