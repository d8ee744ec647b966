/// Lock-free hand-over of a whole value from one thread to another.
#ifndef VARNO_HOST_TRIPLEBUFFER_H
#define VARNO_HOST_TRIPLEBUFFER_H

#include <array>
#include <atomic>
#include <cstdint>

namespace varno {

/// One thread writes and publishes, another acquires the latest published value; neither ever waits, and
/// values published in between are skipped. Of the three slots each side owns one; the third lies in the
/// middle with a mark that says whether it is newer than the reader's.
template<class T>
class TripleBuffer {
public:
    /// All slots start as copies of `initial`.
    explicit TripleBuffer(const T& initial)
        : mSlots{initial, initial, initial} {}

    /// The writer's slot; its contents are an older value until it is written over. Writer only.
    T& back() noexcept { return mSlots[mBack]; }
    /// Makes the writer's slot the latest value. Writer only.
    void publish() noexcept { mBack = mMiddle.exchange(mBack | kNew, std::memory_order_acq_rel) & kIndex; }

    /// Moves on to the latest published value; false when there is none newer. Reader only.
    bool acquire() noexcept {
        if ((mMiddle.load(std::memory_order_relaxed) & kNew) == 0) {
            return false;
        }
        mFront = mMiddle.exchange(mFront, std::memory_order_acq_rel) & kIndex;
        return true;
    }
    /// The reader's value, unchanged until the next `acquire`. Reader only.
    const T& front() const noexcept { return mSlots[mFront]; }

private:
    static constexpr std::uint8_t kIndex = 3;
    static constexpr std::uint8_t kNew = 4;

    std::array<T, 3> mSlots;
    std::uint8_t mBack = 0;
    std::atomic<std::uint8_t> mMiddle{1};
    std::uint8_t mFront = 2;
};

} // namespace varno

#endif
