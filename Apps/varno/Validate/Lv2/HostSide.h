/// What a host of LV2 offers a plug-in.
#ifndef VARNO_APPS_VARNO_VALIDATE_LV2_HOSTSIDE_H
#define VARNO_APPS_VARNO_VALIDATE_LV2_HOSTSIDE_H

#include <cstddef>
#include <cstdint>
#include <map>
#include <mutex>
#include <string>
#include <vector>

#include <lv2/core/lv2.h>
#include <lv2/log/log.h>
#include <lv2/options/options.h>
#include <lv2/state/state.h>
#include <lv2/urid/urid.h>
#include <lv2/worker/worker.h>

namespace varno::validate {

/// Numbers for URIs, counted from 1 in the order in which they are asked for. [any]
class UriNumbers {
public:
    UriNumbers();
    UriNumbers(const UriNumbers&) = delete;
    UriNumbers& operator=(const UriNumbers&) = delete;
    ~UriNumbers() = default;

    LV2_URID numberOf(const std::string& uri);
    /// Null for a number that was not given. Valid as long as this object.
    const char* uriOf(LV2_URID number);

    LV2_URID_Map& map() { return mMap; }
    LV2_URID_Unmap& unmap() { return mUnmap; }

private:
    std::mutex mMutex;
    std::map<std::string, LV2_URID> mNumbers;
    std::vector<const char*> mUris; ///< Keys of mNumbers, by number - 1.
    LV2_URID_Map mMap;
    LV2_URID_Unmap mUnmap;
};

/// The work that a plug-in has a host do outside run(). It is done after the run() that asks for it, so that
/// the same calls give the same sound.
class Work {
public:
    Work();
    Work(const Work&) = delete;
    Work& operator=(const Work&) = delete;
    ~Work() = default;

    LV2_Worker_Schedule& schedule() { return mSchedule; }
    /// From now on, what is asked for is done within the question, as hosts do that render a file.
    void doAtOnce(LV2_Handle plugin, const LV2_Worker_Interface* worker) {
        mPlugin = plugin;
        mWorker = worker;
    }
    /// As at the beginning.
    void doLater() { mWorker = nullptr; }
    /// Does what has been asked for until now. @param worker null where the plug-in has none
    void doRequests(LV2_Handle plugin, const LV2_Worker_Interface* worker);
    /// Follows each run(): hands the results over.
    void endRun(LV2_Handle plugin, const LV2_Worker_Interface* worker);

private:
    using Message = std::vector<std::byte>;

    static LV2_Worker_Status respond(LV2_Worker_Respond_Handle self, std::uint32_t size, const void* data);
    void schedule(std::uint32_t size, const void* data);

    LV2_Worker_Schedule mSchedule;
    LV2_Handle mPlugin = nullptr;
    const LV2_Worker_Interface* mWorker = nullptr; ///< Where work is done at once.
    std::vector<Message> mRequests;
    std::vector<Message> mResponses;
};

/// What a plug-in logs is no finding.
LV2_Log_Log silentLog();

/// The features of one instance. Stays where it is.
class HostSide {
public:
    /// What it offers.
    enum class Offer {
        kUsual,
        kUnknownToo, ///< A feature and an option beside, of which no plug-in knows.
    };

    HostSide(UriNumbers& numbers, double rateHz, std::int32_t mostFrames, Offer offer = Offer::kUsual);
    HostSide(const HostSide&) = delete;
    HostSide& operator=(const HostSide&) = delete;
    ~HostSide() = default;

    /// Ends with null; to make the instance, and to save and restore its state.
    const LV2_Feature* const* features() const { return mFeatures.data(); }
    Work& work() { return mWork; }

    /// Whether a plug-in that requires this feature can be run.
    static bool offers(const std::string& feature);

private:
    Work mWork;
    float mRateHz;
    std::int32_t mShortest = 0;
    std::int32_t mLongest;
    std::int32_t mEventBytes;
    std::vector<LV2_Options_Option> mOptions;
    LV2_Log_Log mLog;
    LV2_State_Map_Path mMapPath;
    LV2_State_Free_Path mFreePath;
    std::vector<LV2_Feature> mTable;
    std::vector<const LV2_Feature*> mFeatures;
};

/// Room of a port for events, in bytes.
inline constexpr std::int32_t kEventBytes = 65536;

} // namespace varno::validate

#endif
