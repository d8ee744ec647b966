/// What a CLAP host offers a plug-in here: log, parameters and latency.
#ifndef VARNO_APPS_VARNO_VALIDATE_CLAP_CLAPHOST_H
#define VARNO_APPS_VARNO_VALIDATE_CLAP_CLAPHOST_H

#include "CLAP/Clap/Plugin.h"

#include <atomic>
#include <functional>
#include <mutex>
#include <string>
#include <thread>
#include <utility>
#include <vector>

namespace varno::validate {

/// The host of one plug-in. Made on the thread that is its main thread. Stays where it is.
class ClapHost {
public:
    /// @param complaints takes what the plug-in does against the rules; outlives this object
    explicit ClapHost(std::vector<std::string>& complaints);
    ClapHost(const ClapHost&) = delete;
    ClapHost& operator=(const ClapHost&) = delete;
    ~ClapHost() = default;

    const clap_host_t& table() const { return mTable; }
    /// Whether the plug-in has asked for on_main_thread() since the last call. [any]
    bool takeCallback() { return mIsCallbackWanted.exchange(false); }

    /// From now on, called within every call of the plug-in's on the main thread. Empty for nothing. [main]
    void setHook(std::function<void()> hook) { mHook = std::move(hook); }
    /// For the functions of the table: runs the hook. [any]
    void called() const;

    /// [any]
    void complain(const std::string& text);
    /// Notes a call that belongs to the main thread. [any]
    void expectMainThread(const char* call);

private:
    clap_host_t mTable;
    std::mutex mMutex;
    std::vector<std::string>& mComplaints;
    std::thread::id mMainThread;
    std::function<void()> mHook;
    std::atomic<bool> mIsCallbackWanted{false};
};

} // namespace varno::validate

#endif
