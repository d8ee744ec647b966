#include "Host/Instance.h"

#include "Host/AudioContext.h"
#include "Host/Editor.h"
#include "Host/HostError.h"
#include "Host/HostObject.h"
#include "Host/HostOptions.h"
#include "Host/InstanceHost.h"
#include "Host/PageTable.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace varno {

namespace {

const InstanceSetup& requireValid(const InstanceSetup& setup, const HostOptions& options) {
    if (const auto refusal = sampleRateRefusal(options.sampleRates, setup.sampleRateHz)) {
        throw HostError(*refusal);
    }
    if (setup.maximumFrames < 1) {
        throw HostError("found a largest buffer of " + std::to_string(setup.maximumFrames) +
                        " frames, expected at least 1");
    }
    return setup;
}

const EffectDescription& findEffect(const Module& module, const std::string& effectID) {
    const EffectDescription* effect = module.description().effect(effectID);
    if (effect == nullptr) {
        throw HostError("the module has no effect" + (effectID.empty() ? "" : " " + quoted(effectID)));
    }
    return *effect;
}

const VariantDescription& findVariant(const EffectDescription& effect, std::int32_t channels) {
    const VariantDescription* variant = effect.variantFor(channels);
    if (variant == nullptr) {
        throw HostError("effect " + quoted(effect.id) + " has no native routine for " +
                        std::to_string(channels) + " channels");
    }
    return *variant;
}

void requireSuccess(AAX_Result result, std::string_view what) {
    if (result != AAX_SUCCESS) {
        throw HostError(std::string(what) + ": the data model answered " + std::to_string(result) +
                        ", expected 0");
    }
}

} // namespace

Instance::Instance(std::shared_ptr<Module> module, const InstanceSetup& setup)
    : mSetup(requireValid(setup, module->options())),
      mTicket(std::move(module)),
      mEffect(&findEffect(mTicket.module(), mSetup.effectID)),
      mVariant(&findVariant(*mEffect, mSetup.channels)),
      mHost(new InstanceHost(mTicket.module().context(), *mEffect, *mVariant, mSetup), "instance host"),
      mDataModel(mTicket.module().monitor(), "data model") {
    const MainGate::Scope scope(mHost->state().gate, "Instance");
    createDataModel();
    readParameters();
    mAudio = std::make_unique<AudioContext>(mHost->state());
    resetPrivateData();
    generateCoefficients();
    reportUnpostedPorts();
}

Instance::~Instance() {
    const MainGate::Scope scope(mHost->state().gate, "~Instance");
    const auto& monitor = mTicket.module().monitor();
    if (mIsProcessing.load()) {
        monitor->report(Contract::kLifecycle, "the instance ended while it processed");
    }
    if (mEditor != nullptr) {
        monitor->report(Contract::kLifecycle, "the instance ended while its editor was open");
        mEditor->close();
    }
    mDataModel.end();
    mHost->end();
}

void Instance::createDataModel() {
    const AAX_CCreateObjectProc create = mEffect->procedure(kAAX_ProcPtrID_Create_EffectParameters);
    if (create == nullptr || !mDataModel.create(create, IID_IAAXEffectParametersV1)) {
        throw HostError("effect " + quoted(mEffect->id) + " makes no data model");
    }
    mHost->setDataModel(mDataModel.unknown());
    mHost->state().notify = [this](AAX_CTypeID type, const void* data, std::uint32_t size) {
        return forwardNotification(type, data, size);
    };
    mDataModel.initialize(*mHost);
}

void Instance::readParameters() {
    AAX_IACFEffectParameters& model = mDataModel.use();
    std::int32_t count = 0;
    HostString masterBypass;
    requireSuccess(model.GetNumberOfParameters(&count), "number of parameters");
    requireSuccess(model.GetMasterBypassParameter(&masterBypass), "master bypass");
    for (std::int32_t index = 0; index < count; ++index) {
        HostString id;
        HostString name;
        HostString defaultText;
        std::uint8_t isAutomatable = 0;
        ParameterInfo info;
        info.index = index;
        const std::string what = "parameter " + std::to_string(index);
        requireSuccess(model.GetParameterIDFromIndex(index, &id), what);
        info.id = id.text();
        const char* paramID = info.id.c_str();
        requireSuccess(model.GetParameterName(paramID, &name), what);
        requireSuccess(model.GetParameterType(paramID, &info.type), what);
        requireSuccess(model.GetParameterNumberOfSteps(paramID, &info.steps), what);
        requireSuccess(model.GetParameterDefaultNormalizedValue(paramID, &info.defaultNormalized), what);
        requireSuccess(
            model.GetParameterStringFromValue(paramID, info.defaultNormalized, &defaultText, kLongestText),
            what);
        requireSuccess(model.GetParameterIsAutomatable(paramID, &isAutomatable), what);
        info.name = name.text();
        info.defaultText = defaultText.text();
        info.isAutomatable = isAutomatable != 0;
        info.isMasterBypass = info.id == masterBypass.text();
        mParameters.push_back(std::move(info));
    }
}

void Instance::resetPrivateData() {
    for (const FieldDescription& field : mVariant->fields) {
        if (field.kind == FieldKind::kPrivateData) {
            mDataModel.use().ResetFieldData(field.index, mAudio->privateData(field.index).data(), field.size);
        }
    }
}

void Instance::reportUnpostedPorts() const {
    for (const AAX_CFieldIndex field : mHost->state().packets.portsNeverPosted()) {
        mTicket.module().monitor()->report(
            Contract::kPackets, "no packet for field " + std::to_string(field) + " before the first buffer");
    }
}

const ParameterInfo* Instance::parameter(const std::string& id) const {
    const auto found = std::find_if(mParameters.begin(), mParameters.end(),
                                    [&](const ParameterInfo& candidate) { return candidate.id == id; });
    return found == mParameters.end() ? nullptr : &*found;
}

const std::string& Instance::requireParameter(const std::string& id) const {
    if (parameter(id) == nullptr) {
        throw HostError("found parameter " + quoted(id) + ", which effect " + quoted(mEffect->id) +
                        " does not have");
    }
    return id;
}

double Instance::normalized(const std::string& id) const {
    const MainGate::Scope scope(mHost->state().gate, "Instance::normalized");
    double value = 0.0;
    requireSuccess(mDataModel.use().GetParameterNormalizedValue(requireParameter(id).c_str(), &value), id);
    return value;
}

std::string Instance::text(const std::string& id) const {
    const MainGate::Scope scope(mHost->state().gate, "Instance::text");
    HostString text;
    requireSuccess(
        mDataModel.use().GetParameterValueString(requireParameter(id).c_str(), &text, kLongestText), id);
    return text.text();
}

std::string Instance::textOf(const std::string& id, double normalized) const {
    const MainGate::Scope scope(mHost->state().gate, "Instance::textOf");
    HostString text;
    requireSuccess(mDataModel.use().GetParameterStringFromValue(requireParameter(id).c_str(), normalized,
                                                                &text, kLongestText),
                   id);
    return text.text();
}

std::optional<double> Instance::fromText(const std::string& id, const std::string& text) const {
    const MainGate::Scope scope(mHost->state().gate, "Instance::fromText");
    double value = 0.0;
    const AAX_Result result =
        mDataModel.use().GetParameterValueFromString(requireParameter(id).c_str(), &value, HostString(text));
    return result == AAX_SUCCESS ? std::optional<double>(value) : std::nullopt;
}

void Instance::setNormalized(const std::string& id, double normalized) {
    const MainGate::Scope scope(mHost->state().gate, "Instance::setNormalized");
    requireParameter(id);
    if (!(normalized >= 0.0 && normalized <= 1.0)) {
        throw HostError("found value " + std::to_string(normalized) + " for parameter " + quoted(id) +
                        ", expected 0 to 1");
    }
    mHost->automation().request({id, normalized});
    idle();
}

void Instance::requestNormalized(const std::string& id, double normalized) {
    const MainGate::Scope scope(mHost->state().gate, "Instance::requestNormalized");
    requireSuccess(mDataModel.use().SetParameterNormalizedValue(requireParameter(id).c_str(), normalized),
                   id);
}

void Instance::idle() {
    const MainGate::Scope scope(mHost->state().gate, "Instance::idle");
    std::vector<ValueRequest> requests = mHost->automation().takeRequests();
    if (!requests.empty()) {
        answer(requests);
    }
    mHost->automation().recycle(std::move(requests));
}

void Instance::update(const std::string& id, double normalized) {
    const AAX_Result result = mDataModel.use().UpdateParameterNormalizedValue(id.c_str(), normalized,
                                                                              AAX_eUpdateSource_Unspecified);
    if (result != AAX_SUCCESS) {
        mTicket.module().monitor()->report(Contract::kParameters, "the update of parameter " + quoted(id) +
                                                                      " answered " + std::to_string(result) +
                                                                      ", expected 0");
    }
}

void Instance::answer(const std::vector<ValueRequest>& requests) {
    for (const ValueRequest& request : requests) {
        update(request.id, request.normalized);
    }
    generateCoefficients();
    if (mFollower != nullptr) {
        std::vector<BufferValue> values;
        for (const ValueRequest& request : requests) {
            if (const ParameterInfo* info = parameter(request.id)) {
                values.push_back({static_cast<std::size_t>(info->index), request.normalized});
            }
        }
        mFollower->follow(values);
    }
    for (auto request = requests.begin(); mEditor != nullptr && request != requests.end(); ++request) {
        // Once for each parameter, however often it was requested.
        if (std::ranges::find(requests.begin(), request, request->id, &ValueRequest::id) == request) {
            mEditor->parameterUpdated(request->id);
        }
    }
}

void Instance::generateCoefficients() {
    PacketExchange& packets = mHost->state().packets;
    packets.beginSet();
    const AAX_Result result = mDataModel.use().GenerateCoefficients();
    packets.endSet();
    if (result != AAX_SUCCESS) {
        mTicket.module().monitor()->report(Contract::kPackets, "GenerateCoefficients answered " +
                                                                   std::to_string(result) + ", expected 0");
    }
}

bool Instance::setBeforeBuffer(std::span<const BufferValue> values) noexcept {
    const AudioThreadScope audioThread;
    const MainGate::BufferValuesScope scope(mHost->state().gate);
    if (!scope.isHeld()) {
        return false;
    }
    for (const BufferValue& value : values) {
        if (value.parameter < mParameters.size() && !std::isnan(value.normalized)) {
            update(mParameters[value.parameter].id, std::clamp(value.normalized, 0.0, 1.0));
        }
    }
    generateCoefficients();
    if (mFollower != nullptr) {
        mFollower->follow(values);
    }
    return true;
}

void Instance::process(const float* const* inputs, float* const* outputs, std::int32_t frames) noexcept {
    const AudioThreadScope audioThread;
    if (!beginProcessing()) {
        return;
    }
    std::int32_t done = 0;
    do {
        const std::int32_t length = std::min(frames - done, mSetup.maximumFrames);
        mAudio->run(inputs, outputs, done, length);
        done += length;
    } while (done < frames);
    endProcessing();
}

bool Instance::beginProcessing() noexcept {
    if (mIsProcessing.exchange(true, std::memory_order_acquire)) {
        mTicket.module().monitor()->report(Contract::kThread, "two threads process one instance at once");
        return false;
    }
    return true;
}

void Instance::endProcessing() noexcept {
    mIsProcessing.store(false, std::memory_order_release);
}

void Instance::passBy(std::int32_t frames, const MeterBank& meters) noexcept {
    InstanceState& state = mHost->state();
    state.meters.copyTaps(meters);
    state.meters.afterBuffer(frames);
    state.positionFrames.store(state.positionFrames.load(std::memory_order_relaxed) + frames,
                               std::memory_order_relaxed);
}

void Instance::continueFrom(const Instance& other) noexcept {
    const OversamplingRules& rules = mTicket.module().options().oversampling;
    const std::span<const std::byte> from = other.privateData(rules.stateField);
    const std::span<std::byte> to = mAudio->privateData(rules.stateField);
    for (const OversamplingRules::Bytes& part : rules.carriedState) {
        if (part.offset + part.size <= std::min(from.size(), to.size())) {
            std::ranges::copy(from.subspan(part.offset, part.size), to.subspan(part.offset).begin());
        }
    }
    mAudio->restartCoefficients();
}

void Instance::setFollower(ValueFollower* follower) {
    const MainGate::Scope scope(mHost->state().gate, "Instance::setFollower");
    mFollower = follower;
}

void Instance::reset() {
    const MainGate::Scope scope(mHost->state().gate, "Instance::reset");
    if (mIsProcessing.load(std::memory_order_acquire)) {
        mTicket.module().monitor()->report(Contract::kThread, "the instance is reset while it processes");
        return;
    }
    resetPrivateData();
    mAudio->restartCoefficients();
    mHost->state().meters.reset();
    mHost->state().positionFrames.store(0);
}

std::int64_t Instance::position() const {
    return mHost->state().positionFrames.load();
}

std::int32_t Instance::latencyFrames() const {
    const MainGate::Scope scope(mHost->state().gate, "Instance::latencyFrames");
    return mHost->state().latencyFrames;
}

const MeterBank& Instance::meters() const {
    return mHost->state().meters;
}

MeterBank& Instance::meters() {
    return mHost->state().meters;
}

std::span<const std::byte> Instance::privateData(AAX_CFieldIndex field) const {
    return mAudio->privateData(field);
}

ChunkIdentity Instance::chunkIdentity() const {
    const InstanceState& state = mHost->state();
    const auto code = [&](AAX_EProperty property) {
        return static_cast<AAX_CTypeID>(state.nativeProperty(property));
    };
    ChunkIdentity identity{code(AAX_eProperty_ManufacturerID), code(AAX_eProperty_ProductID),
                           code(AAX_eProperty_PlugInID_Native), 0};
    requireSuccess(mDataModel.use().GetChunkIDFromIndex(0, &identity.chunkID), "chunk identifier");
    return identity;
}

StoredChunk Instance::save() {
    const MainGate::Scope scope(mHost->state().gate, "Instance::save");
    AAX_IACFEffectParameters& model = mDataModel.use();
    const ChunkIdentity identity = chunkIdentity();
    std::uint32_t size = 0;
    requireSuccess(model.GetChunkSize(identity.chunkID, &size), "size of the saved state");
    StoredChunk chunk(size, identity);
    requireSuccess(model.GetChunk(identity.chunkID, chunk.record()), "saved state");
    return chunk;
}

void Instance::setChunk(const StoredChunk& chunk) {
    requireSuccess(mDataModel.use().SetChunk(chunk.identity().chunkID, chunk.record()), "saved state");
    idle();
}

void Instance::restore(const StoredChunk& chunk) {
    const MainGate::Scope scope(mHost->state().gate, "Instance::restore");
    chunk.requireWrittenBy(*mEffect, chunkIdentity());
    idle();
    const StoredChunk before = save();
    setChunk(chunk);
    if (!equals(chunk)) {
        setChunk(before);
        throw HostError("saved state: not every value arrived, expected a valid value for each parameter");
    }
}

bool Instance::equals(const StoredChunk& chunk) {
    const MainGate::Scope scope(mHost->state().gate, "Instance::equals");
    std::uint8_t isEqual = 0;
    requireSuccess(mDataModel.use().CompareActiveChunk(chunk.record(), &isEqual),
                   "comparing the saved state");
    return isEqual != 0;
}

std::unique_ptr<Editor> Instance::openEditor(ViewContainer& container) {
    const MainGate::Scope scope(mHost->state().gate, "Instance::openEditor");
    if (mEditor != nullptr) {
        throw HostError("an editor of this instance is open already");
    }
    const AAX_CCreateObjectProc create = mEffect->procedure(kAAX_ProcPtrID_Create_EffectGUI);
    auto object = std::make_unique<Editor::Object>(mTicket.module().monitor(), "editor");
    if (create == nullptr || !object->create(create, IID_IAAXEffectGUIV1)) {
        return nullptr;
    }
    object->initialize(*mHost);
    return std::unique_ptr<Editor>(new Editor(*this, std::move(object), container));
}

AAX_Result Instance::forwardNotification(AAX_CTypeID type, const void* data, std::uint32_t size) {
    const AAX_Result result = mDataModel.use().NotificationReceived(type, data, size);
    if (mEditor != nullptr) {
        mEditor->notify(type, data, size);
    }
    return result == AAX_SUCCESS ? AAX_SUCCESS : AAX_ERROR_NOTIFICATION_FAILED;
}

void Instance::timer() {
    const MainGate::Scope scope(mHost->state().gate, "Instance::timer");
    mDataModel.use().TimerWakeup();
}

ACFPtr<PageTable> Instance::pageTable(AAX_CTypeID tableType, std::int32_t pageSize) {
    const MainGate::Scope scope(mHost->state().gate, "Instance::pageTable");
    const InstanceState& state = mHost->state();
    auto table = ACFPtr<PageTable>::Adopt(new PageTable(state.context));
    const AAX_Result copied = mHost->pageTables().CopyTableForEffect(
        state.nativeProperty(AAX_eProperty_ManufacturerID), state.nativeProperty(AAX_eProperty_ProductID),
        state.nativeProperty(AAX_eProperty_PlugInID_Native), tableType, pageSize, table.Get());
    if (copied != AAX_SUCCESS) {
        return {};
    }
    requireSuccess(mDataModel.use().UpdatePageTable(tableType, pageSize, table.Get(), mHost.get()),
                   "page table");
    return table;
}

AAX_IACFEffectParameters& Instance::dataModel() {
    return mDataModel.use();
}

} // namespace varno
