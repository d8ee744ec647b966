/// The values of a plug-in's parameters between its host, its audio thread and its window.
#ifndef VARNO_FORMATS_CLAP_VALUEEXCHANGE_H
#define VARNO_FORMATS_CLAP_VALUEEXCHANGE_H

#include <atomic>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace varno {

/// One value per parameter, the last that anybody set, and who is still to hear of it. Nobody waits, and
/// nothing is lost however long a receiver stays away: it finds the newest value. All values are normalized.
/// [any]
class ValueExchange {
public:
    /// Receivers, and what a host hears of besides values.
    enum Change : std::uint32_t {
        kForAudio = 1U << 0,  ///< The routine.
        kForHost = 1U << 1,   ///< The host's record.
        kForWindow = 1U << 2, ///< The settings that the window shows.
        kTouched = 1U << 3,   ///< The user has taken the control since the host was told.
        kHeld = 1U << 4,      ///< The user holds the control; stays until it is let go.
    };

    explicit ValueExchange(std::size_t parameters)
        : mCells(parameters) {}

    std::size_t size() const noexcept { return mCells.size(); }
    float value(std::size_t index) const noexcept {
        return mCells[index].value.load(std::memory_order_relaxed);
    }
    /// Sets a value and names who is to hear of it.
    void set(std::size_t index, float value, std::uint32_t changes) noexcept {
        mCells[index].value.store(value, std::memory_order_relaxed);
        mark(index, changes);
    }
    void mark(std::size_t index, std::uint32_t changes) noexcept {
        mCells[index].changes.fetch_or(changes, std::memory_order_release);
        mAny.fetch_or(changes, std::memory_order_release);
    }
    /// The user lets a control go.
    void letGo(std::size_t index) noexcept {
        mCells[index].changes.fetch_and(~std::uint32_t{kHeld}, std::memory_order_release);
        mAny.fetch_or(kTouched, std::memory_order_release);
    }
    /// Whether the user holds a control.
    bool isHeld(std::size_t index) const noexcept {
        return (mCells[index].changes.load(std::memory_order_relaxed) & kHeld) != 0;
    }

    /// Whether there may be something for the receivers in `changes` since the last call with them.
    bool takeAny(std::uint32_t changes) noexcept {
        return (mAny.load(std::memory_order_relaxed) & changes) != 0 &&
               (mAny.fetch_and(~changes, std::memory_order_acquire) & changes) != 0;
    }
    /// What of `changes` a parameter has, which is taken; kHeld is not taken.
    std::uint32_t take(std::size_t index, std::uint32_t changes) noexcept {
        return mCells[index].changes.fetch_and(~(changes & ~std::uint32_t{kHeld}),
                                               std::memory_order_acquire) &
               changes;
    }

private:
    struct Cell {
        std::atomic<float> value{0.0F};
        std::atomic<std::uint32_t> changes{0};
    };

    std::vector<Cell> mCells;
    std::atomic<std::uint32_t> mAny{0}; ///< All changes that any parameter may have.
};

} // namespace varno

#endif
