#include "Validate/Module/ModuleEditor.h"

#include "Host/ContractMonitor.h"
#include "Host/InstanceHost.h"

#include <algorithm>
#include <cmath>
#include <thread>
#include <utility>

namespace varno::validate {
namespace {

HostLoop::Owner numberOf(const void* owner) {
    return reinterpret_cast<HostLoop::Owner>(owner);
}

EditorSize pixels(const AAX_Point& size) {
    return {static_cast<int>(std::lround(size.horz)), static_cast<int>(std::lround(size.vert))};
}

} // namespace

ModuleEditor::ModuleEditor(Instance& instance, const std::vector<Parameter>& parameters, EditorLink& link,
                           EditorSetup setup)
    : mInstance(&instance),
      mParameters(parameters),
      mLink(link),
      mSetup(std::move(setup)),
      mContainer(ACFPtr<ViewContainer>::Adopt(new ViewContainer(instance.module().context()))) {
    // The architecture hands a native view over as a pointer.
    // NOLINTNEXTLINE(performance-no-int-to-ptr)
    mContainer->setView(AAX_eViewContainerType_X11, reinterpret_cast<void*>(std::uintptr_t{mSetup.window}));
    mContainer->setDesktop(this);
    mContainer->setSizeHandler([this](const AAX_Point& wanted) -> AAX_Result {
        const EditorSize size = pixels(wanted);
        mSetup.onEvent({.kind = EditorEvent::Kind::kResize, .width = size.width, .height = size.height});
        return AAX_SUCCESS;
    });
    mContainer->setMouseHandler([this](const MouseOffer&) -> AAX_Result {
        mSetup.onEvent({.kind = EditorEvent::Kind::kOffer});
        return AAX_ERROR_UNIMPLEMENTED;
    });
    instance.host().automation().addListener(*this);
    try {
        mEditor = instance.openEditor(*mContainer);
        if (mEditor == nullptr) {
            throw PluginError("the effect has no editor");
        }
        mLink.set(this);
    } catch (...) {
        instance.host().automation().removeListener(*this);
        throw;
    }
}

ModuleEditor::~ModuleEditor() {
    ModuleEditor::close();
}

// Within a call of the editor's the view is closed; the editor itself ends after that call.
void ModuleEditor::close() {
    if (!std::exchange(mIsClosed, true)) {
        mEditor->setContainer(nullptr);
    }
    if (!mIsInIdle) {
        end();
    }
}

void ModuleEditor::end() {
    if (Instance* const instance = std::exchange(mInstance, nullptr)) {
        mLink.set(nullptr);
        mEditor->close();
        // What a hand held is released first.
        instance->host().automation().removeListener(*this);
        instance->host().automation().reportOpenTouches();
        if (mLoop.count() > 0) {
            instance->module().monitor()->report(Contract::kLifecycle,
                                                 "an editor left timers or watches when it was closed");
        }
        mContainer->setDesktop(nullptr);
    }
}

void ModuleEditor::idle() {
    if (mIsClosed) {
        return;
    }
    mIsInIdle = true;
    for (const BufferValue& value : mLink.takeValues()) {
        mInstance->setNormalized(mParameters.at(value.parameter).id, value.normalized);
    }
    mInstance->idle();
    mInstance->timer();
    // Each of these calls may close the editor.
    mEditor->timer();
    mLoop.turn();
    mIsInIdle = false;
    if (mIsClosed) {
        end();
    }
}

std::optional<EditorSize> ModuleEditor::size() const {
    return mInstance == nullptr ? std::nullopt : std::optional(pixels(mEditor->size()));
}

void ModuleEditor::watch(int descriptor, const void* owner, Wake wake) {
    mLoop.watch(descriptor, numberOf(owner), std::move(wake));
}

void ModuleEditor::unwatch(int descriptor, const void* owner) {
    mLoop.unwatch(descriptor, numberOf(owner));
}

void ModuleEditor::startTimer(std::chrono::milliseconds period, const void* owner, Wake wake) {
    mLoop.startTimer(period, numberOf(owner), std::move(wake));
}

void ModuleEditor::stopTimer(const void* owner) {
    mLoop.stopTimer(numberOf(owner));
}

void ModuleEditor::valueRequested(const std::string& id, double normalized) {
    tell(EditorEvent::Kind::kValue, id, normalized);
}

void ModuleEditor::touched(const std::string& id) {
    tell(EditorEvent::Kind::kTouch, id);
}

void ModuleEditor::released(const std::string& id) {
    tell(EditorEvent::Kind::kRelease, id);
}

// What comes with a buffer on another thread is the host's own automation.
void ModuleEditor::tell(EditorEvent::Kind kind, const std::string& id, double value) {
    if (std::this_thread::get_id() != mMainThread) {
        return;
    }
    const auto found = std::ranges::find(mParameters, id, &Parameter::id);
    mSetup.onEvent(
        {.kind = kind, .parameter = static_cast<std::size_t>(found - mParameters.begin()), .value = value});
}

} // namespace varno::validate
