/// The coefficient packet of one field of an algorithm's context.
#ifndef VARNO_INTERFACES_AAX_CPACKET_H
#define VARNO_INTERFACES_AAX_CPACKET_H

#include "AAX.h"

#include <cstddef>
#include <stdexcept>
#include <type_traits>
#include <vector>

/// A field index, the bytes to post to it and whether they must be computed anew. A new packet is dirty and
/// has no payload. Belongs to a dispatcher, whose lock guards it.
class AAX_CPacket {
public:
    explicit AAX_CPacket(AAX_CFieldIndex fieldIndex)
        : mFieldIndex(fieldIndex) {}
    AAX_CPacket(const AAX_CPacket&) = delete;
    AAX_CPacket& operator=(const AAX_CPacket&) = delete;

    /// The payload as a D for the caller to write: it becomes exactly as long as a D, keeps the bytes that
    /// fit and has zero bytes behind them. Borrowed, valid until the next call. [main]
    template<class D>
    D* GetPtr();
    /// First of GetSize() bytes of payload; borrowed, valid until the next call of GetPtr. Throws
    /// std::out_of_range when no payload has been written. [main]
    const void* GetPayload() { return mPayload.Get(mPayloadSize); }
    /// Bytes of payload. [main]
    std::size_t GetSize() const { return mPayloadSize; }

    AAX_CFieldIndex GetFieldIndex() const { return mFieldIndex; }
    bool IsDirty() const { return mDirty; }
    void SetDirty(bool dirty) { mDirty = dirty; }

private:
    /// Owns the payload's bytes.
    class SPacketData {
    public:
        /// First of exactly `size` bytes: grows with zero bytes, or shrinks. Throws std::out_of_range for 0.
        char* Get(std::size_t size) {
            mData.resize(size);
            if (mData.empty()) {
                throw std::out_of_range("the packet has no payload");
            }
            return mData.data();
        }

    private:
        static constexpr std::size_t kInitialSize = 8; ///< Bytes, enough for a double.
        std::vector<char> mData = std::vector<char>(kInitialSize);
    };

    AAX_CFieldIndex mFieldIndex;
    bool mDirty = true;
    std::size_t mPayloadSize = 0;
    SPacketData mPayload;
};

template<class D>
D* AAX_CPacket::GetPtr() {
    static_assert(std::is_trivially_copyable_v<D>);
    static_assert(alignof(D) <= __STDCPP_DEFAULT_NEW_ALIGNMENT__);
    mPayloadSize = sizeof(D);
    return reinterpret_cast<D*>(mPayload.Get(mPayloadSize));
}

#endif
