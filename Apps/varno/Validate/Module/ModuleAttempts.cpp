#include "Validate/Module/ModuleAttempts.h"

#include "Host/HostObject.h"
#include "Host/StoredChunk.h"
#include "Validate/Module/RawHost.h"
#include "Validate/Module/RawModel.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <limits>
#include <memory>
#include <utility>

namespace varno::validate {
namespace {

using Model = AAX_IACFEffectParameters;

constexpr std::uint32_t kAnyFactor = 37;
// The letters of a four-character identifier in the other case.
constexpr std::uint32_t kOtherCase = 0x20202020;

// A call that takes a parameter's identifier.
struct ParameterCall {
    const char* name;
    AAX_Result (*call)(Model& model, AAX_CParamID id);
};

// A name that there is not may be the empty text instead of an error.
AAX_Result failureOfName(AAX_Result result, const HostString& name) {
    return result == AAX_SUCCESS && name.text().empty() ? AAX_ERROR_INVALID_PARAMETER_ID : result;
}

constexpr ParameterCall kParameterCalls[] = {
    {"GetParameterIsAutomatable",
     [](Model& model, AAX_CParamID id) {
         std::uint8_t found = 0;
         return model.GetParameterIsAutomatable(id, &found);
     }},
    {"GetParameterNumberOfSteps",
     [](Model& model, AAX_CParamID id) {
         std::int32_t found = 0;
         return model.GetParameterNumberOfSteps(id, &found);
     }},
    {"GetParameterName",
     [](Model& model, AAX_CParamID id) {
         HostString found("before");
         return failureOfName(model.GetParameterName(id, &found), found);
     }},
    {"GetParameterNameOfLength",
     [](Model& model, AAX_CParamID id) {
         HostString found("before");
         return failureOfName(model.GetParameterNameOfLength(id, &found, 8), found);
     }},
    {"GetParameterDefaultNormalizedValue",
     [](Model& model, AAX_CParamID id) {
         double found = 0.0;
         return model.GetParameterDefaultNormalizedValue(id, &found);
     }},
    {"SetParameterDefaultNormalizedValue",
     [](Model& model, AAX_CParamID id) { return model.SetParameterDefaultNormalizedValue(id, 1.0); }},
    {"GetParameterType",
     [](Model& model, AAX_CParamID id) {
         AAX_EParameterType found{};
         return model.GetParameterType(id, &found);
     }},
    {"GetParameterOrientation",
     [](Model& model, AAX_CParamID id) {
         std::int32_t found = 0;
         return model.GetParameterOrientation(id, &found);
     }},
    {"GetParameter",
     [](Model& model, AAX_CParamID id) {
         AAX_IParameter* found = nullptr;
         return model.GetParameter(id, &found);
     }},
    {"GetParameterIndex",
     [](Model& model, AAX_CParamID id) {
         std::int32_t found = 0;
         return model.GetParameterIndex(id, &found);
     }},
    {"GetParameterValueInfo",
     [](Model& model, AAX_CParamID id) {
         std::int32_t found = 0;
         return model.GetParameterValueInfo(id, 0, &found);
     }},
    {"GetParameterValueFromString",
     [](Model& model, AAX_CParamID id) {
         double found = 0.0;
         return model.GetParameterValueFromString(id, &found, HostString("1"));
     }},
    {"GetParameterStringFromValue",
     [](Model& model, AAX_CParamID id) {
         HostString found;
         return model.GetParameterStringFromValue(id, 1.0, &found, Instance::kLongestText);
     }},
    {"GetParameterValueString",
     [](Model& model, AAX_CParamID id) {
         HostString found;
         return model.GetParameterValueString(id, &found, Instance::kLongestText);
     }},
    {"GetParameterNormalizedValue",
     [](Model& model, AAX_CParamID id) {
         double found = 0.0;
         return model.GetParameterNormalizedValue(id, &found);
     }},
    {"SetParameterNormalizedValue",
     [](Model& model, AAX_CParamID id) { return model.SetParameterNormalizedValue(id, 1.0); }},
    {"SetParameterNormalizedRelative",
     [](Model& model, AAX_CParamID id) { return model.SetParameterNormalizedRelative(id, 0.5); }},
    {"TouchParameter", [](Model& model, AAX_CParamID id) { return model.TouchParameter(id); }},
    {"ReleaseParameter", [](Model& model, AAX_CParamID id) { return model.ReleaseParameter(id); }},
    {"UpdateParameterNormalizedValue",
     [](Model& model, AAX_CParamID id) {
         return model.UpdateParameterNormalizedValue(id, 1.0, AAX_eUpdateSource_Unspecified);
     }},
    {"UpdateParameterNormalizedRelative",
     [](Model& model, AAX_CParamID id) { return model.UpdateParameterNormalizedRelative(id, 0.5); }},
};

// A call that takes another identifier, or a number of something.
struct NumberCall {
    const char* name;
    AAX_Result (*call)(Model& model, std::int32_t number);
    bool mustFail; ///< Others may take any number.
};

constexpr NumberCall kNumberCalls[] = {
    {"GetParameterIDFromIndex",
     [](Model& model, std::int32_t number) {
         HostString found;
         return model.GetParameterIDFromIndex(number, &found);
     },
     true},
    {"GetChunkIDFromIndex",
     [](Model& model, std::int32_t number) {
         AAX_CTypeID found = 0;
         return model.GetChunkIDFromIndex(number, &found);
     },
     true},
    {"GetChunkSize",
     [](Model& model, std::int32_t number) {
         std::uint32_t found = 0;
         return model.GetChunkSize(static_cast<AAX_CTypeID>(number), &found);
     },
     true},
    {"GetCurveData",
     [](Model& model, std::int32_t number) {
         const float at = 0.5F;
         float found = 0.0F;
         return model.GetCurveData(static_cast<AAX_CTypeID>(number), &at, 1, &found);
     },
     true},
    {"GetCurveDataMeterIds",
     [](Model& model, std::int32_t number) {
         std::uint32_t x = 0;
         std::uint32_t y = 0;
         return model.GetCurveDataMeterIds(static_cast<AAX_CTypeID>(number), &x, &y);
     },
     true},
    {"GetCustomData",
     [](Model& model, std::int32_t number) {
         std::array<char, 64> data{};
         std::uint32_t size = 0;
         return model.GetCustomData(static_cast<AAX_CTypeID>(number), data.size(), data.data(), &size);
     },
     false},
    {"SetCustomData",
     [](Model& model, std::int32_t number) {
         const std::array<char, 64> data{};
         return model.SetCustomData(static_cast<AAX_CTypeID>(number), data.size(), data.data());
     },
     false},
    {"NotificationReceived",
     [](Model& model, std::int32_t number) {
         return model.NotificationReceived(static_cast<AAX_CTypeID>(number), nullptr, 0);
     },
     false},
    {"ResetFieldData",
     [](Model& model, std::int32_t number) {
         alignas(64) std::array<char, 64> data{};
         return model.ResetFieldData(static_cast<AAX_CFieldIndex>(number), data.data(), data.size());
     },
     false},
    {"UpdatePageTable",
     [](Model& model, std::int32_t number) {
         return model.UpdatePageTable(static_cast<std::uint32_t>(number), number, nullptr, nullptr);
     },
     false},
};

std::string answerText(AAX_Result result) {
    return result == AAX_SUCCESS ? "success" : "";
}

// Requests of the module that follow from what was tried are answered, as hosts do.
std::string answered(Instance& instance, AAX_Result result) {
    instance.idle();
    return answerText(result);
}

void addParameterCalls(Instance& instance, std::vector<Attempt>& attempts) {
    const std::string known = instance.parameters().empty() ? "P" : instance.parameters().front().id;
    constexpr std::size_t kVeryLong = 100000;
    const std::pair<const char*, std::string> identifiers[] = {
        {"an unknown identifier", "No such parameter"},
        {"an empty identifier", ""},
        {"a very long identifier", std::string(kVeryLong, 'x')},
        {"an identifier with a character more", known + "x"},
        {"an identifier with the least character", known + '\x01'}};
    for (const ParameterCall& each : kParameterCalls) {
        const std::string name = std::string(each.name) + " of ";
        attempts.push_back({name + "no identifier", [&instance, &each] {
                                return answered(instance, each.call(instance.dataModel(), nullptr));
                            }});
        for (const auto& [kind, identifier] : identifiers) {
            attempts.push_back({name + kind, [&instance, &each, id = identifier] {
                                    return answered(instance, each.call(instance.dataModel(), id.c_str()));
                                }});
        }
    }
    // Told of a touch, a model gives no failure; it must do nothing.
    for (AAX_CParamID const id : std::initializer_list<AAX_CParamID>{nullptr, "", "No such parameter"}) {
        attempts.push_back({"UpdateParameterTouch of none that there is", [&instance, id] {
                                (void)instance.dataModel().UpdateParameterTouch(id, 1);
                                return answered(instance, AAX_ERROR_INVALID_PARAMETER_ID);
                            }});
    }
}

void addNumberCalls(Instance& instance, std::vector<Attempt>& attempts) {
    constexpr std::int32_t kNumbers[] = {-1, 1000000, std::numeric_limits<std::int32_t>::max(),
                                         std::numeric_limits<std::int32_t>::min()};
    for (const NumberCall& each : kNumberCalls) {
        for (const std::int32_t number : kNumbers) {
            attempts.push_back(
                {std::string(each.name) + " of " + std::to_string(number), [&instance, &each, number] {
                     const AAX_Result result = each.call(instance.dataModel(), number);
                     return answered(instance, each.mustFail ? result : AAX_ERROR_UNKNOWN_ID);
                 }});
        }
    }
}

// A record with the data of another plug-in: as the own one begins, then anything.
StoredChunk foreignRecord(std::uint32_t size, const ChunkIdentity& identity) {
    StoredChunk chunk(size, identity);
    for (std::uint32_t i = 4; i < size; ++i) {
        chunk.record()->fData[i] = static_cast<char>(i * kAnyFactor);
    }
    return chunk;
}

} // namespace

std::vector<Attempt> unknownIdentifiers(Instance& instance) {
    std::vector<Attempt> attempts;
    addParameterCalls(instance, attempts);
    addNumberCalls(instance, attempts);
    return attempts;
}

std::vector<Attempt> foreignChunks(Instance& instance) {
    const StoredChunk own = instance.save();
    const ChunkIdentity identity = own.identity();
    const auto size = static_cast<std::uint32_t>(own.data().size());
    ChunkIdentity foreign = identity;
    foreign.manufacturerID ^= kOtherCase;
    foreign.productID ^= kOtherCase;
    foreign.plugInID ^= kOtherCase;
    foreign.chunkID ^= kOtherCase;
    std::vector<Attempt> attempts;
    const auto add = [&](const std::string& name, AAX_CTypeID chunkID, const StoredChunk& record,
                         bool mustFail) {
        attempts.push_back({"SetChunk " + name, [&instance, chunkID, record, mustFail] {
                                const AAX_Result result =
                                    instance.dataModel().SetChunk(chunkID, record.record());
                                return answered(instance, mustFail ? result : AAX_ERROR_MALFORMED_CHUNK);
                            }});
        attempts.push_back({"CompareActiveChunk " + name, [&instance, record] {
                                std::uint8_t isEqual = 0;
                                (void)instance.dataModel().CompareActiveChunk(record.record(), &isEqual);
                                return std::string();
                            }});
    };
    add("with another chunk's identifier", foreign.chunkID, foreignRecord(size, foreign), true);
    add("with another chunk's identifier and the own data", foreign.chunkID, own, true);
    add("with no identifier", 0, foreignRecord(size, foreign), true);
    const std::uint32_t shorter = size - std::min(size, 4U);
    for (const std::uint32_t other : {0U, 1U, 4U, 16U, size / 2, shorter, size, size + 4, 2 * size, 65536U}) {
        add("with " + std::to_string(other) + " bytes of another plug-in", identity.chunkID,
            foreignRecord(other, foreign), false);
    }
    return attempts;
}

std::vector<Attempt> callsFromWithin(Instance& instance) {
    const auto chunk = std::make_shared<const StoredChunk>(instance.save());
    const auto parameter = std::make_shared<const std::string>(
        instance.parameters().empty() ? "none" : instance.parameters().front().id);
    std::vector<Attempt> attempts;
    for (const RawCall& outer : rawCalls()) {
        for (const RawCall& inner : rawCallsOfALife()) {
            attempts.push_back(
                {std::string(outer.name) + " with a host that calls " + inner.name + " within its functions",
                 [&instance, &outer, &inner, chunk, parameter]() -> std::string {
                     const std::int32_t before = instance.module().liveObjects();
                     RawHost host;
                     {
                         const auto model = makeModel(instance.effect());
                         const RawModel raw{*model.Get(), host.unknown(), *chunk, *parameter};
                         if (std::strcmp(outer.name, "Initialize") != 0) {
                             model->Initialize(&host.unknown());
                         }
                         bool isWithin = false;
                         host.setHook([&] {
                             if (!std::exchange(isWithin, true)) {
                                 inner.call(raw);
                                 isWithin = false;
                             }
                         });
                         outer.call(raw);
                         host.setHook({});
                         model->Uninitialize();
                     }
                     const std::int32_t left = instance.module().liveObjects() - before;
                     return left == 0 ? "" : std::to_string(left) + " objects left";
                 }});
        }
    }
    return attempts;
}

} // namespace varno::validate
