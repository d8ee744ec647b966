#include "Host/HostComponentDescriptor.h"

#include "Host/HostPropertyMap.h"

#include <algorithm>

namespace varno {

namespace {

std::string textOrEmpty(const char* text) {
    return text == nullptr ? "" : text;
}

} // namespace

HostComponentDescriptor::HostComponentDescriptor(std::shared_ptr<HostContext> context)
    : HostObject(std::move(context), "component descriptor") {
}

AAX_Result HostComponentDescriptor::Clear() {
    mDescription = {};
    return AAX_SUCCESS;
}

AAX_Result HostComponentDescriptor::declare(FieldDescription field) {
    const auto& fields = mDescription.fields;
    const bool isTaken = std::any_of(fields.begin(), fields.end(), [&](const FieldDescription& other) {
        return other.index == field.index;
    });
    if (field.index < 0 || isTaken) {
        return AAX_ERROR_INVALID_FIELD_INDEX;
    }
    mDescription.fields.push_back(std::move(field));
    return AAX_SUCCESS;
}

AAX_Result HostComponentDescriptor::AddAudioIn(AAX_CFieldIndex field) {
    return declare({field, FieldKind::AudioIn, 0, 0, {}});
}

AAX_Result HostComponentDescriptor::AddAudioOut(AAX_CFieldIndex field) {
    return declare({field, FieldKind::AudioOut, 0, 0, {}});
}

AAX_Result HostComponentDescriptor::AddAudioBufferLength(AAX_CFieldIndex field) {
    return declare({field, FieldKind::BufferLength, 0, 0, {}});
}

AAX_Result HostComponentDescriptor::AddSampleRate(AAX_CFieldIndex field) {
    return declare({field, FieldKind::SampleRate, 0, 0, {}});
}

AAX_Result HostComponentDescriptor::AddClock(AAX_CFieldIndex field) {
    return declare({field, FieldKind::Clock, 0, 0, {}});
}

AAX_Result HostComponentDescriptor::AddSideChainIn(AAX_CFieldIndex field) {
    return declare({field, FieldKind::SideChainIn, 0, 0, {}});
}

AAX_Result HostComponentDescriptor::AddDataInPort(AAX_CFieldIndex field, std::uint32_t packetSize,
                                                  AAX_EDataInPortType type) {
    if (packetSize == 0) {
        return AAX_ERROR_INVALID_ARGUMENT;
    }
    return declare({field, FieldKind::DataInPort, packetSize, static_cast<std::uint32_t>(type), {}});
}

AAX_Result HostComponentDescriptor::AddAuxOutputStem(AAX_CFieldIndex, std::int32_t, const char*) {
    return AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result HostComponentDescriptor::AddPrivateData(AAX_CFieldIndex field, std::int32_t size,
                                                   std::uint32_t options) {
    if (size < 1) {
        return AAX_ERROR_INVALID_ARGUMENT;
    }
    return declare({field, FieldKind::PrivateData, static_cast<std::uint32_t>(size), options, {}});
}

AAX_Result HostComponentDescriptor::AddTemporaryData(AAX_CFieldIndex field, std::uint32_t size) {
    return declare({field, FieldKind::TemporaryData, size, 0, {}});
}

AAX_Result HostComponentDescriptor::AddDmaInstance(AAX_CFieldIndex, AAX_IDma::EMode) {
    return AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result HostComponentDescriptor::AddMeters(AAX_CFieldIndex field, const AAX_CTypeID* meterIDs,
                                              std::uint32_t count) {
    if (meterIDs == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    if (mDescription.firstField(FieldKind::Meters) != nullptr) {
        return AAX_ERROR_CONTEXT_ALREADY_HAS_METERS;
    }
    return declare({field, FieldKind::Meters, static_cast<std::uint32_t>(count * sizeof(float)), 0,
                    std::vector<AAX_CTypeID>(meterIDs, meterIDs + count)});
}

AAX_Result HostComponentDescriptor::AddMIDINode(AAX_CFieldIndex, std::int32_t, const char*, std::uint32_t) {
    return AAX_ERROR_UNIMPLEMENTED;
}

AAX_Result HostComponentDescriptor::AddReservedField(AAX_CFieldIndex field, std::uint32_t fieldType) {
    return declare({field, FieldKind::Reserved, 0, fieldType, {}});
}

AAX_Result HostComponentDescriptor::NewPropertyMap(IACFUnknown** outMap) {
    if (context()->options.faults.noComponentPropertyMap && outMap != nullptr) {
        *outMap = nullptr;
        return AAX_ERROR_NULL_OBJECT;
    }
    return handOutPropertyMap(context(), {}, outMap);
}

AAX_Result HostComponentDescriptor::DuplicatePropertyMap(IACFUnknown* map, IACFUnknown** outMap) {
    if (outMap != nullptr) {
        *outMap = nullptr;
    }
    const auto* own = ownObject<HostPropertyMap>(map);
    return own == nullptr ? AAX_ERROR_NULL_ARGUMENT
                          : handOutPropertyMap(context(), own->properties(), outMap);
}

std::int32_t HostComponentDescriptor::nextProcID(std::int32_t* outProcID) {
    ++mLastProcID;
    if (outProcID != nullptr) {
        *outProcID = mLastProcID;
    }
    return mLastProcID;
}

AAX_Result HostComponentDescriptor::AddProcessProc_Native(AAX_CProcessProc processProc,
                                                          IACFUnknown* properties,
                                                          AAX_CInstanceInitProc initProc,
                                                          AAX_CBackgroundProc backgroundProc,
                                                          std::int32_t* outProcID) {
    const auto* map = ownObject<HostPropertyMap>(properties);
    if (processProc == nullptr || map == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    if (context()->options.faults.addProcess != AAX_SUCCESS) {
        return context()->options.faults.addProcess;
    }
    mDescription.natives.push_back(
        {nextProcID(outProcID), processProc, initProc, backgroundProc, map->properties()});
    return AAX_SUCCESS;
}

AAX_Result HostComponentDescriptor::AddProcessProc_TI(const char* dllName, const char* entryName,
                                                      IACFUnknown* properties, const char* initName,
                                                      const char* backgroundName, std::int32_t* outProcID) {
    const auto* map = ownObject<HostPropertyMap>(properties);
    if (dllName == nullptr || entryName == nullptr || map == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    if (context()->options.faults.addProcess != AAX_SUCCESS) {
        return context()->options.faults.addProcess;
    }
    mDescription.tis.push_back({nextProcID(outProcID), dllName, entryName, textOrEmpty(initName),
                                textOrEmpty(backgroundName), map->properties()});
    return AAX_SUCCESS;
}

AAX_Result HostComponentDescriptor::AddProcessProc(IACFUnknown*, std::int32_t*, std::int32_t) {
    return AAX_ERROR_UNIMPLEMENTED;
}

void* HostComponentDescriptor::interfaceFor(const acfIID& iid) {
    if (iid == IID_IAAXComponentDescriptorV1) {
        return static_cast<AAX_IACFComponentDescriptor*>(this);
    }
    return iid == kOwnID ? this : nullptr;
}

} // namespace varno
