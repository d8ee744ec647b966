/// A host that receives a description and records every call, for tests.
#ifndef VARNO_TESTS_SOURCE_DESCRIPTIONRECORDER_H
#define VARNO_TESTS_SOURCE_DESCRIPTIONRECORDER_H

#include "AAX_IACFCollection.h"
#include "AAX_IACFComponentDescriptor.h"
#include "AAX_IACFEffectDescriptor.h"
#include "AAX_IACFPropertyMap.h"
#include "Tests/Support/FakeUnknown.h"

#include <map>
#include <memory>
#include <sstream>
#include <string>
#include <vector>

namespace varno::test {

/// A four-character code as its characters.
inline std::string codeText(AAX_CTypeID code) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        text += static_cast<char>(code >> shift & 0xFF);
    }
    return text;
}

/// The calls of one description, in order, and their results.
struct DescriptionLog {
    std::vector<std::string> calls;
    /// Answers by the beginning of a call's text; AAX_SUCCESS for all others.
    std::map<std::string, AAX_Result> answers;

    template<class... Arguments>
    AAX_Result note(const std::string& name, const Arguments&... arguments) {
        std::ostringstream text;
        text << name;
        ((text << ' ' << arguments), ...);
        calls.push_back(text.str());
        for (const auto& [beginning, answer] : answers) {
            if (calls.back().starts_with(beginning)) {
                return answer;
            }
        }
        return AAX_SUCCESS;
    }
};

/// Integer properties are logged under the map's name and number.
class PropertyMapRecorder : public FakeUnknown<AAX_IACFPropertyMap> {
public:
    PropertyMapRecorder(DescriptionLog& log, std::string name)
        : mLog(log),
          mName(std::move(name)) {
        offer(IID_IAAXPropertyMapV1, this);
    }

    AAX_Result AddProperty(AAX_EProperty property, std::int32_t value) override {
        return mLog.note(mName, property, value);
    }
    AAX_Result GetProperty(AAX_EProperty, std::int32_t*) const override { return AAX_ERROR_UNIMPLEMENTED; }
    AAX_Result GetPointerProperty(AAX_EProperty, const void**) const override {
        return AAX_ERROR_UNIMPLEMENTED;
    }
    AAX_Result AddPointerProperty(AAX_EProperty, const void*) override { return mLog.note("pointer"); }
    AAX_Result RemoveProperty(AAX_EProperty) override { return mLog.note("remove"); }
    AAX_Result AddPropertyWithIDArray(AAX_EProperty, const AAX_CTypeID*, std::uint32_t) override {
        return mLog.note("ids");
    }
    AAX_Result GetPropertyWithIDArray(AAX_EProperty, const AAX_CTypeID**, std::uint32_t*) const override {
        return AAX_ERROR_UNIMPLEMENTED;
    }

private:
    DescriptionLog& mLog;
    std::string mName;
};

/// Makes property maps, and logs that; an answer other than success makes none.
class PropertyMapMaker {
public:
    explicit PropertyMapMaker(DescriptionLog& log)
        : mLog(log) {}

    AAX_Result make(const std::string& owner, IACFUnknown** outMap) {
        *outMap = nullptr;
        const std::string name = owner + ".map" + std::to_string(mMaps.size() + 1);
        const AAX_Result answer = mLog.note(owner + ".NewPropertyMap", name);
        if (answer == AAX_SUCCESS) {
            mMaps.push_back(std::make_unique<PropertyMapRecorder>(mLog, name));
            mMaps.back()->AddRef();
            *outMap = mMaps.back().get();
        }
        return answer;
    }
    std::int32_t references() const {
        std::int32_t sum = 0;
        for (const auto& map : mMaps) {
            sum += map->references();
        }
        return sum;
    }

private:
    DescriptionLog& mLog;
    std::vector<std::unique_ptr<PropertyMapRecorder>> mMaps;
};

/// Logs as "component...".
class ComponentRecorder : public FakeUnknown<AAX_IACFComponentDescriptor> {
public:
    explicit ComponentRecorder(DescriptionLog& log)
        : maps(log),
          mLog(log) {
        offer(IID_IAAXComponentDescriptorV1, this);
    }

    AAX_Result Clear() override { return mLog.note("component.Clear"); }
    AAX_Result AddAudioIn(AAX_CFieldIndex field) override { return mLog.note("AudioIn", field); }
    AAX_Result AddAudioOut(AAX_CFieldIndex field) override { return mLog.note("AudioOut", field); }
    AAX_Result AddAudioBufferLength(AAX_CFieldIndex field) override {
        return mLog.note("AudioBufferLength", field);
    }
    AAX_Result AddSampleRate(AAX_CFieldIndex field) override { return mLog.note("SampleRate", field); }
    AAX_Result AddClock(AAX_CFieldIndex field) override { return mLog.note("Clock", field); }
    AAX_Result AddSideChainIn(AAX_CFieldIndex field) override { return mLog.note("SideChainIn", field); }
    AAX_Result AddDataInPort(AAX_CFieldIndex field, std::uint32_t packetSize,
                             AAX_EDataInPortType type) override {
        return mLog.note("DataInPort", field, packetSize, type);
    }
    AAX_Result AddAuxOutputStem(AAX_CFieldIndex, std::int32_t, const char*) override {
        return mLog.note("AuxOutputStem");
    }
    AAX_Result AddPrivateData(AAX_CFieldIndex field, std::int32_t size, std::uint32_t options) override {
        return mLog.note("PrivateData", field, size, options);
    }
    AAX_Result AddTemporaryData(AAX_CFieldIndex, std::uint32_t) override {
        return mLog.note("TemporaryData");
    }
    AAX_Result AddDmaInstance(AAX_CFieldIndex, AAX_IDma::EMode) override { return mLog.note("DmaInstance"); }
    AAX_Result AddMeters(AAX_CFieldIndex field, const AAX_CTypeID* meterIDs, std::uint32_t count) override {
        std::string ids;
        for (std::uint32_t i = 0; i < count; ++i) {
            ids += codeText(meterIDs[i]);
        }
        return mLog.note("Meters", field, ids);
    }
    AAX_Result AddMIDINode(AAX_CFieldIndex, std::int32_t, const char*, std::uint32_t) override {
        return mLog.note("MIDINode");
    }
    AAX_Result AddReservedField(AAX_CFieldIndex, std::uint32_t) override {
        return mLog.note("ReservedField");
    }
    AAX_Result NewPropertyMap(IACFUnknown** outMap) override { return maps.make("component", outMap); }
    AAX_Result DuplicatePropertyMap(IACFUnknown*, IACFUnknown**) override {
        return mLog.note("DuplicatePropertyMap");
    }
    AAX_Result AddProcessProc_Native(AAX_CProcessProc processProc, IACFUnknown* properties,
                                     AAX_CInstanceInitProc initProc, AAX_CBackgroundProc backgroundProc,
                                     std::int32_t* /*outProcID*/) override {
        routines.push_back(processProc);
        return mLog.note("Native", properties != nullptr, initProc != nullptr, backgroundProc != nullptr);
    }
    AAX_Result AddProcessProc_TI(const char* dllName, const char* entryName, IACFUnknown* properties,
                                 const char* initName, const char* backgroundName,
                                 std::int32_t* /*outProcID*/) override {
        return mLog.note("TI", dllName, entryName, properties != nullptr, initName != nullptr,
                         backgroundName != nullptr);
    }
    AAX_Result AddProcessProc(IACFUnknown*, std::int32_t*, std::int32_t) override {
        return mLog.note("ProcessProc");
    }

    std::vector<AAX_CProcessProc> routines; ///< As registered, in order.
    PropertyMapMaker maps;

private:
    DescriptionLog& mLog;
};

/// Logs as "effect...".
class EffectRecorder : public FakeUnknown<AAX_IACFEffectDescriptor> {
public:
    explicit EffectRecorder(DescriptionLog& log)
        : component(log),
          maps(log),
          mLog(log) {
        offer(IID_IAAXEffectDescriptorV1, this);
    }

    AAX_Result NewComponentDescriptor(IACFUnknown** outComponent) override {
        *outComponent = nullptr;
        const AAX_Result answer = mLog.note("effect.NewComponentDescriptor");
        if (answer == AAX_SUCCESS) {
            component.AddRef();
            *outComponent = &component;
        }
        return answer;
    }
    AAX_Result AddComponent(IACFUnknown* added) override {
        return mLog.note("effect.AddComponent", added != nullptr);
    }
    AAX_Result AddName(const char* name) override { return mLog.note("effect.AddName", name); }
    AAX_Result AddCategory(std::uint32_t category) override {
        return mLog.note("effect.AddCategory", category);
    }
    AAX_Result AddCategoryBypassParameter(std::uint32_t, AAX_CParamID) override {
        return mLog.note("effect.AddCategoryBypassParameter");
    }
    AAX_Result AddProcPtr(void* proc, AAX_CProcPtrID procID) override {
        procedures[procID] = proc;
        return mLog.note("effect.AddProcPtr", procID);
    }
    AAX_Result NewPropertyMap(IACFUnknown** outMap) override { return maps.make("effect", outMap); }
    AAX_Result SetProperties(IACFUnknown*) override { return mLog.note("effect.SetProperties"); }
    AAX_Result AddResourceInfo(AAX_EResourceType type, const char* fileName) override {
        return mLog.note("effect.AddResourceInfo", type, fileName);
    }
    AAX_Result AddMeterDescription(AAX_CTypeID meterID, const char* name, IACFUnknown* properties) override {
        return mLog.note("effect.AddMeterDescription", codeText(meterID), name, properties != nullptr);
    }
    AAX_Result AddControlMIDINode(AAX_CTypeID, std::int32_t, const char*, std::uint32_t) override {
        return mLog.note("effect.AddControlMIDINode");
    }

    std::map<AAX_CProcPtrID, void*> procedures; ///< As registered.
    ComponentRecorder component;                ///< The one that it makes, each time.
    PropertyMapMaker maps;

private:
    DescriptionLog& mLog;
};

/// Logs as "collection...".
class CollectionRecorder : public FakeUnknown<AAX_IACFCollection> {
public:
    CollectionRecorder()
        : effect(log) {
        offer(IID_IAAXCollectionV1, this);
        offer(IID_IACFPluginDefinition, this);
    }

    AAX_Result NewDescriptor(IACFUnknown** outDescriptor) override {
        *outDescriptor = nullptr;
        const AAX_Result answer = log.note("collection.NewDescriptor");
        if (answer == AAX_SUCCESS) {
            effect.AddRef();
            *outDescriptor = &effect;
        }
        return answer;
    }
    AAX_Result AddEffect(const char* effectID, IACFUnknown* descriptor) override {
        return log.note("collection.AddEffect", effectID, descriptor != nullptr);
    }
    AAX_Result SetManufacturerName(const char* name) override {
        return log.note("collection.SetManufacturerName", name);
    }
    AAX_Result AddPackageName(const char* name) override {
        return log.note("collection.AddPackageName", name);
    }
    AAX_Result SetPackageVersion(std::uint32_t version) override {
        return log.note("collection.SetPackageVersion", version);
    }
    AAX_Result NewPropertyMap(IACFUnknown** outMap) override {
        *outMap = nullptr;
        return log.note("collection.NewPropertyMap");
    }
    AAX_Result SetProperties(IACFUnknown*) override { return log.note("collection.SetProperties"); }

    /// References that others hold to anything of the description.
    std::int32_t allReferences() const {
        return references() + effect.references() + effect.maps.references() + effect.component.references() +
               effect.component.maps.references();
    }

    DescriptionLog log;
    EffectRecorder effect; ///< The one that it makes, each time.
};

} // namespace varno::test

#endif
