#include "Host/InstanceState.h"

namespace varno {

namespace {

std::vector<AAX_CTypeID> meterIDs(const VariantDescription& variant) {
    const FieldDescription* field = variant.firstField(FieldKind::Meters);
    return field == nullptr ? std::vector<AAX_CTypeID>() : field->meterIDs;
}

std::string pageTableFileOf(const EffectDescription& effect) {
    const ResourceDescription* resource = effect.resource(AAX_eResourceType_PageTable);
    return resource == nullptr ? std::string() : resource->fileName;
}

} // namespace

InstanceState::InstanceState(std::shared_ptr<HostContext> sharedContext, const EffectDescription& itsEffect,
                             const VariantDescription& itsVariant, const InstanceSetup& itsSetup)
    : context(std::move(sharedContext)),
      effectID(itsEffect.id),
      pageTableFile(pageTableFileOf(itsEffect)),
      variant(itsVariant),
      setup(itsSetup),
      gate(context->monitor),
      packets(variant),
      meters(meterIDs(variant), setup.sampleRateHz) {
}

std::int32_t InstanceState::nativeProperty(AAX_EProperty property) const {
    return variant.natives.empty()
               ? 0
               : integerProperty(variant.natives.front().properties, property).value_or(0);
}

} // namespace varno
