#include "Host/PacketExchange.h"

#include <algorithm>
#include <cstring>

namespace varno {

namespace {

constexpr std::size_t aligned(std::size_t bytes) {
    constexpr std::size_t alignment = alignof(std::max_align_t);
    return (bytes + alignment - 1) / alignment * alignment;
}

std::vector<Port> layOut(const VariantDescription& variant) {
    std::vector<Port> ports;
    std::size_t offset = 0;
    for (const FieldDescription& field : variant.fields) {
        if (field.kind == FieldKind::DataInPort) {
            ports.push_back({field.index, field.size, offset, false});
            offset += aligned(field.size);
        }
    }
    return ports;
}

std::size_t imageSize(const std::vector<Port>& ports) {
    return ports.empty() ? 0 : ports.back().offset + aligned(ports.back().size);
}

} // namespace

PacketExchange::PacketExchange(const VariantDescription& variant)
    : mPorts(layOut(variant)),
      mStaging(imageSize(mPorts)),
      mBuffer(mStaging) {
}

AAX_Result PacketExchange::post(AAX_CFieldIndex field, const void* payload, std::uint32_t size) {
    const auto port = std::find_if(mPorts.begin(), mPorts.end(),
                                   [&](const Port& candidate) { return candidate.field == field; });
    if (port == mPorts.end()) {
        return AAX_ERROR_INVALID_FIELD_INDEX;
    }
    if (payload == nullptr) {
        return AAX_ERROR_NULL_ARGUMENT;
    }
    if (size != port->size) {
        return AAX_ERROR_INVALID_ARGUMENT;
    }
    std::memcpy(mStaging.data() + port->offset, payload, size);
    port->posted = true;
    mIsChanged = true;
    if (!mIsSetOpen) {
        publish();
    }
    return AAX_SUCCESS;
}

void PacketExchange::endSet() {
    mIsSetOpen = false;
    if (mIsChanged) {
        publish();
    }
}

void PacketExchange::publish() {
    // The image goes whole, so that a value survives however many images the reader skips.
    std::copy(mStaging.begin(), mStaging.end(), mBuffer.back().begin());
    mBuffer.publish();
    mIsChanged = false;
}

std::vector<AAX_CFieldIndex> PacketExchange::portsNeverPosted() const {
    std::vector<AAX_CFieldIndex> fields;
    for (const Port& port : mPorts) {
        if (!port.posted) {
            fields.push_back(port.field);
        }
    }
    return fields;
}

} // namespace varno
