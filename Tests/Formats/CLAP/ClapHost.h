/// A CLAP host that keeps what plug-ins ask of it.
#ifndef VARNO_TESTS_FORMATS_CLAP_CLAPHOST_H
#define VARNO_TESTS_FORMATS_CLAP_CLAPHOST_H

#include "CLAP/Clap/Extensions.h"
#include "CLAP/Clap/Plugin.h"

#include <atomic>
#include <map>
#include <string>

namespace varno::test {

/// Offers every extension of a host that the plug-ins know, or none.
class ClapHost {
public:
    enum class Offer { kAll, kNothing };

    explicit ClapHost(Offer offer = Offer::kAll);
    ClapHost(const ClapHost&) = delete;
    ClapHost& operator=(const ClapHost&) = delete;

    const clap_host_t& table() const { return mTable; }
    /// Offers an extension besides. @param functions outlive this object
    void offer(const std::string& id, const void* functions) { mExtensions[id] = functions; }

    std::atomic<int> restarts{0};
    std::atomic<int> processRequests{0};
    std::atomic<int> callbacks{0};
    std::atomic<int> flushes{0};
    int latencyChanges = 0;
    int valueRescans = 0;
    std::string log; ///< The messages, each with a line end.

private:
    clap_host_t mTable;
    std::map<std::string, const void*> mExtensions;
};

/// The host behind what a plug-in passes.
ClapHost& hostOf(const clap_host_t* table);

} // namespace varno::test

#endif
