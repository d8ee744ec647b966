#include "Host/HostObject.h"

namespace varno {

void HostLedger::add(const char* kind) {
    const std::lock_guard lock(mMutex);
    ++mLive[kind];
}

void HostLedger::remove(const char* kind) {
    const std::lock_guard lock(mMutex);
    if (--mLive[kind] == 0) {
        mLive.erase(kind);
    }
}

std::int32_t HostLedger::total() const {
    const std::lock_guard lock(mMutex);
    std::int32_t sum = 0;
    for (const auto& [kind, count] : mLive) {
        sum += count;
    }
    return sum;
}

std::string HostLedger::text() const {
    const std::lock_guard lock(mMutex);
    std::string text;
    for (const auto& [kind, count] : mLive) {
        text += (text.empty() ? "" : ", ") + std::to_string(count) + " ";
        text += kind;
    }
    return text;
}

} // namespace varno
