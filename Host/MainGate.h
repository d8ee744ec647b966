/// One [main] call at a time.
#ifndef VARNO_HOST_MAINGATE_H
#define VARNO_HOST_MAINGATE_H

#include "Host/ContractMonitor.h"

#include <atomic>
#include <memory>
#include <mutex>
#include <thread>

namespace varno {

/// Serialises the [main] calls of one instance: the host's own by a lock that its thread may take again, the
/// module's by a check, since the module must not be made to wait. One [main] operation belongs on the audio
/// thread, by name: giving the data model values that come with a buffer, before that buffer.
class MainGate {
public:
    explicit MainGate(std::shared_ptr<ContractMonitor> monitor)
        : mMonitor(std::move(monitor)) {}

    /// The host's calls hold the gate. A violation from the audio thread.
    class Scope {
    public:
        /// `operation` is a literal that names the call.
        Scope(MainGate& gate, const char* operation);
        Scope(const Scope&) = delete;
        Scope& operator=(const Scope&) = delete;
        ~Scope();

    private:
        MainGate& mGate;
        std::thread::id mOuterOwner;
    };

    /// Values that come with a buffer pass the gate on the audio thread. It never waits: where another thread
    /// is in a [main] call, the gate is not held. [audio]
    class BufferValuesScope {
    public:
        explicit BufferValuesScope(MainGate& gate) noexcept;
        BufferValuesScope(const BufferValuesScope&) = delete;
        BufferValuesScope& operator=(const BufferValuesScope&) = delete;
        ~BufferValuesScope();

        bool isHeld() const { return mIsHeld; }

    private:
        MainGate& mGate;
        bool mIsHeld;
        bool mOuterIsForBuffer = false;
        std::thread::id mOuterOwner;
    };

    /// Takes note of a call of the module's: a violation from the audio thread, except for what it does with
    /// values that come with a buffer; while another thread holds the gate; or after `close`. `operation` is
    /// a literal. [any]
    void check(const char* operation) const;
    /// From now on every call of the module's is too late. [main]
    void close() { mIsClosed.store(true, std::memory_order_release); }

private:
    void checkThread(const char* operation) const;

    std::shared_ptr<ContractMonitor> mMonitor;
    std::recursive_mutex mMutex;
    std::atomic<std::thread::id> mOwner{};
    std::atomic<bool> mIsForBuffer{false}; ///< Whether the owner holds the gate for a buffer's values.
    std::atomic<bool> mIsClosed{false};
};

} // namespace varno

#endif
