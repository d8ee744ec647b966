/// The way of coefficient packets from the data model to the algorithm.
#ifndef VARNO_HOST_PACKETEXCHANGE_H
#define VARNO_HOST_PACKETEXCHANGE_H

#include "AAX.h"
#include "Host/ModuleDescription.h"
#include "Host/TripleBuffer.h"

#include <cstddef>
#include <vector>

namespace varno {

/// Where a data-in port lies in the image of all ports.
struct Port {
    AAX_CFieldIndex field = 0;
    std::uint32_t size = 0; ///< Bytes of a packet.
    std::size_t offset = 0; ///< Bytes from the start of the image, suitably aligned for any packet.
    bool posted = false;    ///< Whether a packet was ever posted.
};

/// Packets gather in an image of all ports, which is handed over whole: the audio thread sees either all of a
/// published set or none of it, always each port's last value, and never waits.
class PacketExchange {
public:
    using Image = std::vector<std::byte>;

    /// Ports of a variant; every packet is zero until posted.
    explicit PacketExchange(const VariantDescription& variant);

    /// Takes a packet of `size` bytes (copied) for a port. It is published at once, unless a set is open.
    /// Returns AAX_SUCCESS; AAX_ERROR_INVALID_FIELD_INDEX for a field that is no port;
    /// AAX_ERROR_NULL_ARGUMENT; AAX_ERROR_INVALID_ARGUMENT for a size other than the port's. [main]
    AAX_Result post(AAX_CFieldIndex field, const void* payload, std::uint32_t size);
    /// Opens a set: packets posted until `endSet` arrive together. [main]
    void beginSet() { mIsSetOpen = true; }
    /// Publishes the set, if anything was posted. [main]
    void endSet();
    /// The ports without any packet so far. [main]
    std::vector<AAX_CFieldIndex> portsNeverPosted() const;

    /// Moves on to the latest published image; false when there is none newer. [audio]
    bool acquire() noexcept { return mBuffer.acquire(); }
    /// The image acquired last, unchanged until the next `acquire`. [audio]
    const std::byte* image() const noexcept { return mBuffer.front().data(); }
    /// All ports in field order of declaration. [any]
    const std::vector<Port>& ports() const { return mPorts; }

private:
    void publish();

    std::vector<Port> mPorts;
    Image mStaging; ///< Each port's last packet.
    TripleBuffer<Image> mBuffer;
    bool mIsSetOpen = false;
    bool mIsChanged = false;
};

} // namespace varno

#endif
