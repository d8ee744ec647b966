/// The description of a module, as plain data.
#ifndef VARNO_HOST_MODULEDESCRIPTION_H
#define VARNO_HOST_MODULEDESCRIPTION_H

#include "AAX.h"

#include <map>
#include <optional>
#include <string>
#include <variant>
#include <vector>

namespace varno {

/// Value of one property: an integer, a pointer of the module's, or a list of identifiers.
using PropertyValue = std::variant<std::int32_t, const void*, std::vector<AAX_CTypeID>>;
/// Properties by number.
using Properties = std::map<AAX_EProperty, PropertyValue>;

/// The integer under a property, if there is one. [any]
std::optional<std::int32_t> integerProperty(const Properties& properties, AAX_EProperty property);

/// What a field of an algorithm's context points at.
enum class FieldKind {
    kAudioIn,
    kAudioOut,
    kBufferLength,
    kSampleRate,
    kClock,
    kSideChainIn,
    kDataInPort,
    kPrivateData,
    kTemporaryData,
    kMeters,
    kReserved,
};

/// The name of a kind of field, as written in descriptions and messages. [any]
const char* fieldKindName(FieldKind kind);

/// One declared field.
struct FieldDescription {
    AAX_CFieldIndex index = 0; ///< Which pointer of the context, from 0.
    FieldKind kind = FieldKind::kReserved;
    std::uint32_t size = 0; ///< Bytes behind the pointer: packet, private, temporary and meter data; else 0.
    std::uint32_t options = 0; ///< Port type, placement of private data or type of a reserved field; else 0.
    std::vector<AAX_CTypeID> meterIDs; ///< Identifiers of the taps in order, for Meters; else empty.
};

/// A routine that runs on this machine.
struct NativeRoutine {
    std::int32_t procID = 0; ///< The host's number of the registration, unique within the module.
    AAX_CProcessProc process = nullptr;
    AAX_CInstanceInitProc init = nullptr;
    AAX_CBackgroundProc background = nullptr;
    Properties properties;
};

/// A routine in a separate file for DSP hardware. Absent names are empty.
struct TiRoutine {
    std::int32_t procID = 0;
    std::string dllName;
    std::string entryName;
    std::string initName;
    std::string backgroundName;
    Properties properties;
};

/// One algorithm variant.
struct VariantDescription {
    std::vector<FieldDescription> fields; ///< In the order of declaration.
    std::vector<NativeRoutine> natives;
    std::vector<TiRoutine> tis;

    /// Pointers of the context: one more than the largest declared index.
    std::size_t contextLength() const;
    /// The first field of a kind, null when there is none.
    const FieldDescription* firstField(FieldKind kind) const;
    /// Channels of the native routine's stem formats; 0 without one.
    std::int32_t inputChannels() const;
    std::int32_t outputChannels() const;
    /// Whether any registration of this variant carries the plug-in identifier `plugInID`.
    bool hasPlugInID(AAX_CTypeID plugInID) const;
};

/// A meter as shown to people.
struct MeterDescription {
    AAX_CTypeID id = 0;
    std::string name;
    Properties properties;
};

/// A creation procedure.
struct ProcedureDescription {
    AAX_CProcPtrID id{};
    AAX_CCreateObjectProc create = nullptr;
};

/// A file in the bundle's resources.
struct ResourceDescription {
    AAX_EResourceType type{};
    std::string fileName;
};

/// One effect.
struct EffectDescription {
    std::string id;
    std::vector<std::string> names; ///< Longest first is not guaranteed; a host shows the longest that fits.
    std::vector<std::uint32_t> categories;
    std::vector<std::string> bypassParameters; ///< Parameters that bypass a category.
    std::vector<ProcedureDescription> procedures;
    std::vector<ResourceDescription> resources;
    std::vector<MeterDescription> meters;
    Properties properties;
    std::vector<VariantDescription> variants;

    /// The creation procedure of a kind, null when there is none.
    AAX_CCreateObjectProc procedure(AAX_CProcPtrID procID) const;
    /// The first resource of a kind, null when there is none.
    const ResourceDescription* resource(AAX_EResourceType type) const;
    /// The first variant with a native routine for `channels` inputs and as many outputs, null when there is
    /// none.
    const VariantDescription* variantFor(std::int32_t channels) const;
};

/// The whole module.
struct ModuleDescription {
    std::uint64_t sdkVersion = 0;
    std::string manufacturerName;
    std::vector<std::string> packageNames;
    std::uint32_t packageVersion = 0;
    Properties properties;
    std::vector<EffectDescription> effects;

    /// The effect with the identifier `effectID`, the first of all for an empty one; null when there is none.
    const EffectDescription* effect(const std::string& effectID) const;
};

/// Channels of a stem format: its low sixteen bits. [any]
constexpr std::int32_t stemChannels(std::int32_t stemFormat) {
    constexpr std::int32_t kChannels = 0xFFFF;
    return stemFormat & kChannels;
}

/// A four-character code as its four characters, or as "0x" and eight digits when one is not printable. [any]
std::string codeText(AAX_CTypeID code);

/// What is wrong or missing in a description, one line each; empty when a host can use it. [any]
std::vector<std::string> descriptionProblems(const ModuleDescription& description);

} // namespace varno

#endif
