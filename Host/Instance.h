/// A running effect.
#ifndef VARNO_HOST_INSTANCE_H
#define VARNO_HOST_INSTANCE_H

#include "AAX_IACFEffectParameters.h"
#include "ACF/ACFPtr.h"
#include "Host/AudioContext.h"
#include "Host/HostObject.h"
#include "Host/HostOptions.h"
#include "Host/Module.h"
#include "Host/PlugInObject.h"
#include "Host/StoredChunk.h"

#include <atomic>
#include <cstdint>
#include <memory>
#include <optional>
#include <span>
#include <string>
#include <vector>

namespace varno {

class AudioContext;
class Editor;
class InstanceHost;
class PageTable;
class ViewContainer;
struct ValueRequest;

/// What is fixed about a parameter.
struct ParameterInfo {
    std::int32_t index = 0;
    std::string id;
    std::string name;
    AAX_EParameterType type = AAX_eParameterType_Continuous;
    std::int32_t steps = 0;
    double defaultNormalized = 0.0;
    std::string defaultText;
    bool isAutomatable = false;
    bool isMasterBypass = false;
};

/// A value that belongs to a buffer.
struct BufferValue {
    std::size_t parameter = 0; ///< Index in Instance::parameters().
    double normalized = 0.0;   ///< 0 to 1.
};

/// Receives what the parameters of an instance are set to.
class ValueFollower {
public:
    /// The values of this call are in force from the instance's next buffer on. On the audio thread, or on
    /// another one during a [main] call; one call at a time. Allocates nothing and never waits. [any]
    virtual void follow(std::span<const BufferValue> values) noexcept = 0;

protected:
    ~ValueFollower() = default;
};

/// One instance of an effect: data model, algorithm and, if asked for, editor.
///
/// Threads: operations marked [main] are serialised by the instance itself; they may be called on any thread
/// but the audio thread. `process` is called on one audio thread at a time, concurrently with all others; so
/// is `setBeforeBuffer`, on the same thread before it. InstanceGroup processes several instances in one call.
class Instance {
public:
    /// Longest text requested of a parameter, in characters.
    static constexpr std::int32_t kLongestText = 64;

    /// Creates, initialises and prepares an instance: its first buffer is processed with its default
    /// settings. Throws HostError, without anything left behind, when the sample rate is refused, when the
    /// module has no such effect, no native routine for the channels or no data model, or when its
    /// initialisation fails. [main]
    Instance(std::shared_ptr<Module> module, const InstanceSetup& setup);
    Instance(const Instance&) = delete;
    Instance& operator=(const Instance&) = delete;
    /// Ends the instance; its editor must be gone, nothing may process. [main]
    ~Instance();

    // What it is. [any]

    const Module& module() const { return mTicket.module(); }
    /// To make another instance of it.
    const std::shared_ptr<Module>& sharedModule() const { return mTicket.sharedModule(); }
    const EffectDescription& effect() const { return *mEffect; }
    const VariantDescription& variant() const { return *mVariant; }
    const InstanceSetup& setup() const { return mSetup; }
    /// All parameters in index order, as they were after initialisation.
    const std::vector<ParameterInfo>& parameters() const { return mParameters; }
    /// The parameter with this identifier (exact), null when there is none.
    const ParameterInfo* parameter(const std::string& id) const;

    // Values; an unknown identifier throws HostError. [main]

    /// The current normalized value, 0 to 1.
    double normalized(const std::string& id) const;
    /// The current value as text.
    std::string text(const std::string& id) const;
    /// A normalized value as text.
    std::string textOf(const std::string& id, double normalized) const;
    /// A text as normalized value; nothing when the parameter does not understand it.
    std::optional<double> fromText(const std::string& id, const std::string& text) const;
    /// Host automation: the value (0 to 1; anything else throws HostError) is in force from the next buffer
    /// on.
    void setNormalized(const std::string& id, double normalized);
    /// A request like an editor's: from the data model to the host's automation; `idle` answers it.
    void requestNormalized(const std::string& id, double normalized);
    /// Answers the module's requests since the last call: gives each requested value to the data model, has
    /// the coefficients computed and handed to the audio thread as one set, and informs the editor.
    void idle();

    // Audio.

    /// For hosts whose values belong to buffers: gives them to the data model and has the coefficients
    /// computed, on the audio thread itself, in force from the next buffer on. Values beyond 0 to 1 are
    /// limited to that; what is not a number, or of no parameter, is left out. Allocates nothing and never
    /// waits: false, with nothing done, where another thread is in a [main] call. An open editor is not
    /// informed. [audio]
    bool setBeforeBuffer(std::span<const BufferValue> values) noexcept;
    /// Processes `frames` frames (0 or more) from `inputs` to `outputs`: one pointer per channel, each to
    /// `frames` samples, borrowed; an output may be an input's memory. More than setup().maximumFrames are
    /// processed in several buffers. Coefficients, meters and the transport move once per buffer. No lock, no
    /// allocation, no system call, no exception. [audio]
    void process(const float* const* inputs, float* const* outputs, std::int32_t frames) noexcept;
    /// In the place of `process`, where another instance has processed the buffer: the position moves, and
    /// the meters show that instance's. [audio]
    void passBy(std::int32_t frames, const MeterBank& meters) noexcept;
    /// Copies what OversamplingRules name of the private state of another instance, and has settings come
    /// into force at once (see InstanceSetup::coefficientDelayFrames), as at the start. [audio]
    void continueFrom(const Instance& other) noexcept;
    /// Puts algorithm, meters and transport back to their start, parameters stay; while nothing processes.
    /// [main]
    void reset();
    /// Frames processed since the start or the last reset. [any]
    std::int64_t position() const;
    /// The latency that the module has reported for compensation, in frames. [main]
    std::int32_t latencyFrames() const;
    /// The meters of the algorithm. [any]
    const MeterBank& meters() const;
    MeterBank& meters();
    /// The first bytes of a private-data field, as the algorithm keeps it; while nothing processes. Empty for
    /// a field that is none. [main]
    std::span<const std::byte> privateData(AAX_CFieldIndex field) const;

    // Saved settings. [main]

    /// The settings as a chunk record. Throws HostError when the module fails.
    StoredChunk save();
    /// Restores settings and answers the requests that follow from this. Throws HostError, with every value
    /// as before, when the record was not written by this effect or when a value did not arrive.
    void restore(const StoredChunk& chunk);
    /// Whether the current settings are those of the record.
    bool equals(const StoredChunk& chunk);

    // Around it. [main]

    /// Makes an editor in `container` (borrowed by the module, referenced by the editor). Null when the
    /// effect has none, which is nothing unusual. Throws HostError when its initialisation fails or another
    /// one is open.
    std::unique_ptr<Editor> openEditor(ViewContainer& container);
    /// The data model's periodic call.
    void timer();
    /// Control-surface page table of a type and page size, from the module's page-table resource and then by
    /// the data model; nothing when the resource has none.
    ACFPtr<PageTable> pageTable(AAX_CTypeID tableType, std::int32_t pageSize);
    /// The data model itself, for what this class does not offer; call it from [main] only, never while
    /// another thread is in here.
    AAX_IACFEffectParameters& dataModel();
    /// The host object that the module has received, borrowed.
    InstanceHost& host() { return *mHost; }
    /// Has another object follow the values, until null is set. It is borrowed. [main]
    void setFollower(ValueFollower* follower);

private:
    friend class Editor;
    friend class InstanceGroup;
    using DataModel = PlugInObject<AAX_IACFEffectParameters>;

    // False, and reported, where another thread processes it. [audio]
    bool beginProcessing() noexcept;
    void endProcessing() noexcept;
    void createDataModel();
    void readParameters();
    void resetPrivateData();
    void reportUnpostedPorts() const;
    const std::string& requireParameter(const std::string& id) const;
    void generateCoefficients();
    void update(const std::string& id, double normalized);
    void answer(const std::vector<ValueRequest>& requests);
    ChunkIdentity chunkIdentity() const;
    void setChunk(const StoredChunk& chunk);
    AAX_Result forwardNotification(AAX_CTypeID type, const void* data, std::uint32_t size);

    InstanceSetup mSetup;
    Module::InstanceTicket mTicket;
    const EffectDescription* mEffect;
    const VariantDescription* mVariant;
    HostReference<InstanceHost> mHost;
    DataModel mDataModel;
    std::vector<ParameterInfo> mParameters;
    std::unique_ptr<AudioContext> mAudio;
    Editor* mEditor = nullptr; ///< The open editor, which is the caller's.
    ValueFollower* mFollower = nullptr;
    std::atomic<bool> mIsProcessing{false};
};

} // namespace varno

#endif
