#include "Validate/Module/RawModel.h"

#include "AAX_UIDs.h"
#include "Host/HostError.h"
#include "Host/HostObject.h"
#include "Host/Instance.h"

#include <array>

namespace varno::validate {
namespace {

void saveRaw(const RawModel& raw) {
    std::uint32_t size = 0;
    AAX_CTypeID id = raw.chunk.identity().chunkID;
    if (raw.model.GetChunkSize(id, &size) == AAX_SUCCESS) {
        StoredChunk chunk(size, raw.chunk.identity());
        raw.model.GetChunk(id, chunk.record());
    }
}

constexpr RawCall kRawCalls[] = {
    {"Initialize", [](const RawModel& raw) { raw.model.Initialize(&raw.host); }},
    {"Uninitialize", [](const RawModel& raw) { raw.model.Uninitialize(); }},
    {"GenerateCoefficients", [](const RawModel& raw) { raw.model.GenerateCoefficients(); }},
    {"GetChunk", saveRaw},
    {"SetChunk",
     [](const RawModel& raw) { raw.model.SetChunk(raw.chunk.identity().chunkID, raw.chunk.record()); }},
    {"UpdateParameterNormalizedValue",
     [](const RawModel& raw) {
         raw.model.UpdateParameterNormalizedValue(raw.parameter.c_str(), 1.0, AAX_eUpdateSource_Unspecified);
     }},
    {"SetParameterNormalizedValue",
     [](const RawModel& raw) { raw.model.SetParameterNormalizedValue(raw.parameter.c_str(), 0.0); }},
    {"GetParameterValueString",
     [](const RawModel& raw) {
         HostString text;
         raw.model.GetParameterValueString(raw.parameter.c_str(), &text, Instance::kLongestText);
     }},
    {"TimerWakeup", [](const RawModel& raw) { raw.model.TimerWakeup(); }},
    {"ResetFieldData",
     [](const RawModel& raw) {
         alignas(64) std::array<char, 4096> data{};
         raw.model.ResetFieldData(0, data.data(), data.size());
     }},
};

} // namespace

ACFPtr<AAX_IACFEffectParameters> makeModel(const EffectDescription& effect) {
    const AAX_CCreateObjectProc create = effect.procedure(kAAX_ProcPtrID_Create_EffectParameters);
    const auto made = ACFPtr<IACFUnknown>::Retain(create == nullptr ? nullptr : create());
    auto model = ACFPtr<AAX_IACFEffectParameters>::Query(made.Get(), IID_IAAXEffectParametersV1);
    if (!model) {
        throw HostError("the effect makes no data model");
    }
    return model;
}

std::span<const RawCall> rawCalls() {
    return kRawCalls;
}

std::span<const RawCall> rawCallsOfALife() {
    return std::span(kRawCalls).subspan(2);
}

} // namespace varno::validate
