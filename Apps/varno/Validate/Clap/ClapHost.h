/// What a CLAP host offers a plug-in here: log, parameters, latency, and what a window needs.
#ifndef VARNO_APPS_VARNO_VALIDATE_CLAP_CLAPHOST_H
#define VARNO_APPS_VARNO_VALIDATE_CLAP_CLAPHOST_H

#include "CLAP/Clap/Gui.h"
#include "CLAP/Clap/Plugin.h"
#include "Validate/Editors/HostLoop.h"
#include "Validate/Plugin.h"

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
    /// Notes timers and descriptors that the plug-in has left.
    ~ClapHost();

    const clap_host_t& table() const { return mTable; }
    /// Whether the plug-in has asked for on_main_thread() since the last call. [any]
    bool takeCallback() { return mIsCallbackWanted.exchange(false); }
    /// Whether the plug-in has asked for params.flush() since the last call. [any]
    void requestFlush() { mIsFlushWanted = true; }
    bool takeFlush() { return mIsFlushWanted.exchange(false); }

    /// The plug-in whose timers and descriptors are called, and who is told what size its window asks for.
    /// [main]
    void follow(const clap_plugin_t* plugin, std::function<void(EditorSize)> onResize);
    /// Timers and descriptors of the plug-in. [main]
    HostLoop& loop() { return mLoop; }

    /// From now on, called within every call of the plug-in's on the main thread. Empty for nothing. [main]
    void setHook(std::function<void()> hook) { mHook = std::move(hook); }
    /// For the functions of the table: runs the hook. [any]
    void called() const;

    /// [any]
    void complain(const std::string& text);
    /// Notes a call that belongs to the main thread. [any]
    void expectMainThread(const char* call);

private:
    friend struct ClapWindowCalls;

    clap_host_t mTable;
    const clap_plugin_t* mPlugin = nullptr;
    std::function<void(EditorSize)> mOnResize;
    HostLoop mLoop;
    clap_id mLastTimer = 0;
    std::mutex mMutex;
    std::vector<std::string>& mComplaints;
    std::thread::id mMainThread;
    std::function<void()> mHook;
    std::atomic<bool> mIsCallbackWanted{false};
    std::atomic<bool> mIsFlushWanted{false};
};

} // namespace varno::validate

#endif
