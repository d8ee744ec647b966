/// The host object of an instance, for its data model and editor.
#ifndef VARNO_HOST_INSTANCEHOST_H
#define VARNO_HOST_INSTANCEHOST_H

#include "Host/AudioContext.h"
#include "Host/ContractMonitor.h"
#include "Host/HostAutomation.h"
#include "Host/HostController.h"
#include "Host/HostObject.h"
#include "Host/HostOptions.h"
#include "Host/ModuleDescription.h"
#include "Host/ModuleHost.h"
#include "Host/PageTableFile.h"

#include <atomic>
#include <functional>
#include <memory>
#include <string>
#include <thread>

namespace varno {

/// Makes the calling thread an audio thread for as long as this lives; scopes nest. [any]
class AudioThreadScope {
public:
    AudioThreadScope() noexcept;
    AudioThreadScope(const AudioThreadScope&) = delete;
    AudioThreadScope& operator=(const AudioThreadScope&) = delete;
    ~AudioThreadScope();

private:
    bool mWasAudioThread;
};

/// Whether the calling thread is an audio thread now. [any]
bool isAudioThread() noexcept;

/// Serialises the [main] calls of one instance: the host's own by an owner, whose thread may enter again, the
/// module's by a check, since the module must not wait. A free gate is taken and left without a call of the
/// system, so that the audio thread may. One [main] operation is allowed on the audio thread:
/// giving the data model the values that belong to a buffer, before that buffer.
class MainGate {
public:
    explicit MainGate(std::shared_ptr<ContractMonitor> monitor)
        : mMonitor(std::move(monitor)) {}

    /// The host's calls hold the gate; other threads wait for its end. A violation from the audio thread.
    class Scope {
    public:
        /// `operation` is a literal that names the call.
        Scope(MainGate& gate, const char* operation);
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;
        ~Scope();

    private:
        MainGate& mGate;
        bool mIsOuter = false; ///< Whether this scope took the gate; else one around it did.
    };

    /// The gate for values that belong to a buffer, on the audio thread. It never waits: where another thread
    /// is in a [main] call, the gate is not held. [audio]
    class BufferValuesScope {
    public:
        explicit BufferValuesScope(MainGate& gate) noexcept;
        BufferValuesScope(const BufferValuesScope&) = delete;
        BufferValuesScope& operator=(const BufferValuesScope&) = delete;
        ~BufferValuesScope();

        bool isHeld() const { return mIsHeld; }

    private:
        MainGate& mGate;
        bool mIsOuter = false;
        bool mIsHeld = false;
        bool mOuterIsForBuffer = false;
    };

    /// Checks a call of the module: a violation on the audio thread, except while it receives the values of a
    /// buffer; while another thread holds the gate; or after `close`. `operation` is a literal. [any]
    void check(const char* operation) const;
    /// Every later call of the module is a violation. [main]
    void close() { mIsClosed.store(true, std::memory_order_release); }

private:
    void checkThread(const char* operation) const;
    bool isOwner() const { return mOwner.load() == std::this_thread::get_id(); }
    bool tryToTake();
    void take();
    void leave();

    std::shared_ptr<ContractMonitor> mMonitor;
    std::atomic<std::thread::id> mOwner{}; ///< The thread that holds the gate; none while it is free.
    std::atomic<bool> mIsForBuffer{false}; ///< Whether the owner holds the gate for a buffer's values.
    std::atomic<bool> mIsClosed{false};
};

/// Part of the host object, which a module may keep too long; so everything here is owned or copied.
struct InstanceState {
    InstanceState(std::shared_ptr<HostContext> sharedContext, const EffectDescription& itsEffect,
                  const VariantDescription& itsVariant, const InstanceSetup& itsSetup);

    std::shared_ptr<HostContext> context;
    const std::string effectID;
    const std::string pageTableFile; ///< Name of the resource; empty when the effect has none.
    const VariantDescription variant;
    const InstanceSetup setup;
    MainGate gate;
    PacketExchange packets;
    MeterBank meters;
    std::atomic<std::int64_t> positionFrames{0};
    std::int32_t latencyFrames = 0; ///< [main]
    /// Hands a notification to the instance's objects; empty while there are none. [main]
    std::function<AAX_Result(AAX_CTypeID type, const void* data, std::uint32_t size)> notify;

    /// An integer property of the native routine, 0 when it is not there. [any]
    std::int32_t nativeProperty(AAX_EProperty property) const;
};

/// One object with many interfaces: controller, transport, automation delegate, page-table controller and
/// component factory; and, for the editor, the data model.
class InstanceHost : public HostObject<IACFUnknown> {
public:
    InstanceHost(std::shared_ptr<HostContext> context, const EffectDescription& effect,
                 const VariantDescription& variant, const InstanceSetup& setup);

    InstanceState& state() { return mState; }
    const InstanceState& state() const { return mState; }
    HostAutomation& automation() { return mAutomation; }
    AAX_IACFPageTableController_V2& pageTables() { return mPageTables; }

    /// The data model (borrowed) that QueryInterface finds, or null when it is destroyed. [main]
    void setDataModel(IACFUnknown* dataModel) { mDataModel = dataModel; }
    /// The data model is destroyed: further calls of the module are violations. [main]
    void end();

protected:
    void* interfaceFor(const acfIID& iid) override;
    ACFRESULT queryOther(const acfIID& iid, void** outObject) override;

private:
    InstanceState mState;
    HostController mController;
    HostTransport mTransport;
    HostAutomation mAutomation;
    HostPageTableController mPageTables;
    HostComponentFactory mFactory;
    IACFUnknown* mDataModel = nullptr;
};

} // namespace varno

#endif
