#include "Host/ModuleDescription.h"

#include <algorithm>
#include <cstdio>
#include <set>

namespace varno {

namespace {

constexpr AAX_EProperty kPlugInIDProperties[] = {AAX_eProperty_PlugInID_Native,
                                                 AAX_eProperty_PlugInID_Offline, AAX_eProperty_PlugInID_TI};

bool carriesPlugInID(const Properties& properties, AAX_CTypeID plugInID) {
    return std::any_of(std::begin(kPlugInIDProperties), std::end(kPlugInIDProperties),
                       [&](AAX_EProperty property) {
                           const std::optional<std::int32_t> id = integerProperty(properties, property);
                           return id && static_cast<AAX_CTypeID>(*id) == plugInID;
                       });
}

std::int32_t nativeChannels(const VariantDescription& variant, AAX_EProperty stemFormat) {
    if (variant.natives.empty()) {
        return 0;
    }
    return stemChannels(integerProperty(variant.natives.front().properties, stemFormat).value_or(0));
}

// Collects the problems of one variant under a common heading.
class VariantCheck {
public:
    VariantCheck(const VariantDescription& variant, std::string heading, std::vector<std::string>& problems)
        : mVariant(variant),
          mHeading(std::move(heading)),
          mProblems(problems) {}

    void run() {
        requireDistinctFields();
        requireNoGaps();
        requireField(FieldKind::kAudioIn);
        requireField(FieldKind::kAudioOut);
        requireField(FieldKind::kBufferLength);
        if (mVariant.natives.empty()) {
            add("no native routine");
        } else if (mVariant.inputChannels() < 1 || mVariant.outputChannels() < 1) {
            add("the native routine has no stem formats");
        }
    }

private:
    void add(const std::string& text) { mProblems.push_back(mHeading + ": " + text); }

    void requireField(FieldKind kind) {
        if (mVariant.firstField(kind) == nullptr) {
            add(std::string("no field for ") + fieldKindName(kind));
        }
    }

    void requireDistinctFields() {
        const auto& fields = mVariant.fields;
        for (auto field = fields.begin(); field != fields.end(); ++field) {
            if (std::ranges::find(fields.begin(), field, field->index, &FieldDescription::index) != field) {
                add("field " + std::to_string(field->index) + " is declared twice");
            }
        }
    }

    void requireNoGaps() {
        const auto& fields = mVariant.fields;
        const auto length = static_cast<AAX_CFieldIndex>(mVariant.contextLength());
        for (AAX_CFieldIndex index = 0; index < length; ++index) {
            if (std::ranges::find(fields, index, &FieldDescription::index) == fields.end()) {
                add("field " + std::to_string(index) + " is not declared");
            }
        }
    }

    const VariantDescription& mVariant;
    std::string mHeading;
    std::vector<std::string>& mProblems;
};

// Native identifiers distinguish the variants of a module in saved settings.
void requireDistinctPlugInIDs(const EffectDescription& effect, std::vector<std::string>& problems) {
    std::set<std::int32_t> seen;
    for (const VariantDescription& variant : effect.variants) {
        for (const NativeRoutine& native : variant.natives) {
            const std::optional<std::int32_t> id =
                integerProperty(native.properties, AAX_eProperty_PlugInID_Native);
            if (!id) {
                problems.push_back("effect " + effect.id + ": a native routine has no plug-in identifier");
            } else if (!seen.insert(*id).second) {
                problems.push_back("effect " + effect.id + ": plug-in identifier " +
                                   codeText(static_cast<AAX_CTypeID>(*id)) + " is used twice");
            }
        }
    }
}

void checkEffect(const EffectDescription& effect, std::vector<std::string>& problems) {
    const std::string heading = "effect " + effect.id;
    if (effect.id.empty()) {
        problems.push_back("an effect has no identifier");
    }
    if (effect.names.empty()) {
        problems.push_back(heading + ": no name");
    }
    if (effect.variants.empty()) {
        problems.push_back(heading + ": no variant");
    }
    if (effect.procedure(kAAX_ProcPtrID_Create_EffectParameters) == nullptr) {
        problems.push_back(heading + ": no creation procedure for the data model");
    }
    for (std::size_t i = 0; i < effect.variants.size(); ++i) {
        VariantCheck(effect.variants[i], heading + ", variant " + std::to_string(i), problems).run();
    }
    requireDistinctPlugInIDs(effect, problems);
}

} // namespace

std::optional<std::int32_t> integerProperty(const Properties& properties, AAX_EProperty property) {
    const auto found = properties.find(property);
    if (found == properties.end() || !std::holds_alternative<std::int32_t>(found->second)) {
        return std::nullopt;
    }
    return std::get<std::int32_t>(found->second);
}

const char* fieldKindName(FieldKind kind) {
    switch (kind) {
    case FieldKind::kAudioIn:
        return "audio in";
    case FieldKind::kAudioOut:
        return "audio out";
    case FieldKind::kBufferLength:
        return "buffer length";
    case FieldKind::kSampleRate:
        return "sample rate";
    case FieldKind::kClock:
        return "clock";
    case FieldKind::kSideChainIn:
        return "side-chain in";
    case FieldKind::kDataInPort:
        return "data-in port";
    case FieldKind::kPrivateData:
        return "private data";
    case FieldKind::kTemporaryData:
        return "temporary data";
    case FieldKind::kMeters:
        return "meters";
    case FieldKind::kReserved:
        return "reserved";
    }
    return "unknown";
}

std::size_t VariantDescription::contextLength() const {
    AAX_CFieldIndex last = -1;
    for (const FieldDescription& field : fields) {
        last = std::max(last, field.index);
    }
    return static_cast<std::size_t>(last + 1);
}

const FieldDescription* VariantDescription::firstField(FieldKind kind) const {
    const auto found = std::find_if(fields.begin(), fields.end(),
                                    [&](const FieldDescription& field) { return field.kind == kind; });
    return found == fields.end() ? nullptr : &*found;
}

std::int32_t VariantDescription::inputChannels() const {
    return nativeChannels(*this, AAX_eProperty_InputStemFormat);
}

std::int32_t VariantDescription::outputChannels() const {
    return nativeChannels(*this, AAX_eProperty_OutputStemFormat);
}

bool VariantDescription::hasPlugInID(AAX_CTypeID plugInID) const {
    const auto carries = [&](const auto& routine) { return carriesPlugInID(routine.properties, plugInID); };
    return std::any_of(natives.begin(), natives.end(), carries) ||
           std::any_of(tis.begin(), tis.end(), carries);
}

AAX_CCreateObjectProc EffectDescription::procedure(AAX_CProcPtrID procID) const {
    const auto found = std::find_if(procedures.begin(), procedures.end(),
                                    [&](const ProcedureDescription& proc) { return proc.id == procID; });
    return found == procedures.end() ? nullptr : found->create;
}

const ResourceDescription* EffectDescription::resource(AAX_EResourceType type) const {
    const auto found = std::find_if(resources.begin(), resources.end(),
                                    [&](const ResourceDescription& entry) { return entry.type == type; });
    return found == resources.end() ? nullptr : &*found;
}

const VariantDescription* EffectDescription::variantFor(std::int32_t channels) const {
    const auto found = std::find_if(variants.begin(), variants.end(), [&](const VariantDescription& variant) {
        return !variant.natives.empty() && variant.inputChannels() == channels &&
               variant.outputChannels() == channels;
    });
    return found == variants.end() ? nullptr : &*found;
}

const EffectDescription* ModuleDescription::effect(const std::string& effectID) const {
    const auto found = std::find_if(effects.begin(), effects.end(), [&](const EffectDescription& entry) {
        return effectID.empty() || entry.id == effectID;
    });
    return found == effects.end() ? nullptr : &*found;
}

std::string codeText(AAX_CTypeID code) {
    std::string text;
    for (int shift = 24; shift >= 0; shift -= 8) {
        const auto character = static_cast<char>((code >> shift) & 0xFFU);
        if (character < ' ' || character > '~') {
            char digits[16];
            std::snprintf(digits, sizeof digits, "0x%08X", code);
            return digits;
        }
        text.push_back(character);
    }
    return text;
}

std::vector<std::string> descriptionProblems(const ModuleDescription& description) {
    std::vector<std::string> problems;
    if (description.manufacturerName.empty()) {
        problems.emplace_back("the module names no manufacturer");
    }
    if (description.packageNames.empty()) {
        problems.emplace_back("the module has no package name");
    }
    if (description.effects.empty()) {
        problems.emplace_back("the module has no effect");
    }
    for (const EffectDescription& effect : description.effects) {
        checkEffect(effect, problems);
    }
    return problems;
}

} // namespace varno
