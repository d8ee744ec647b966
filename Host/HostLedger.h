/// Which host objects are alive.
#ifndef VARNO_HOST_HOSTLEDGER_H
#define VARNO_HOST_HOSTLEDGER_H

#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <string_view>

namespace varno {

/// The host's own live-object count, by kind of object, apart from the module's. Safe from any thread; takes
/// a lock. [any]
class HostLedger {
public:
    /// Enters an object. `kind` is a literal: it is kept as it is.
    void add(const char* kind);
    /// Strikes an object out.
    void remove(const char* kind);
    /// All live objects.
    std::int32_t total() const;
    /// The live objects as text, such as "2 property map, 1 controller"; empty when there is none.
    std::string text() const;

private:
    mutable std::mutex mMutex;
    std::map<std::string_view, std::int32_t> mLive;
};

} // namespace varno

#endif
