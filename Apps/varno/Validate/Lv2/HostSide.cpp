#include "Validate/Lv2/HostSide.h"

#include <algorithm>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <lv2/atom/atom.h>
#include <lv2/buf-size/buf-size.h>
#include <lv2/parameters/parameters.h>
#include <utility>

namespace varno::validate {
namespace {

// Those whose data is something of HostSide, then those that are offered by being named.
constexpr const char* kOffered[] = {LV2_URID__map,
                                    LV2_URID__unmap,
                                    LV2_OPTIONS__options,
                                    LV2_WORKER__schedule,
                                    LV2_LOG__log,
                                    LV2_STATE__mapPath,
                                    LV2_STATE__freePath,
                                    LV2_STATE__threadSafeRestore,
                                    LV2_BUF_SIZE__boundedBlockLength,
                                    LV2_CORE__isLive,
                                    LV2_CORE__hardRTCapable,
                                    LV2_CORE__inPlaceBroken};

constexpr const char* kUnknown = "urn:varno:unknown";

std::vector<std::byte> bytesOf(const void* data, std::uint32_t size) {
    const auto* const begin = static_cast<const std::byte*>(data);
    return {begin, begin + size};
}

char* copyOf(const char* path) {
    const std::size_t bytes = std::strlen(path) + 1;
    auto* const copy = static_cast<char*>(std::malloc(bytes));
    if (copy != nullptr) {
        std::memcpy(copy, path, bytes);
    }
    return copy;
}

// The standard defines it so.
// NOLINTNEXTLINE(cert-dcl50-cpp)
int printNothing(LV2_Log_Handle /*self*/, LV2_URID /*type*/, const char* /*format*/, ...) {
    return 0;
}

// The memory of a message, never null.
const void* dataOf(const std::vector<std::byte>& message) {
    static constexpr std::byte kNothing{};
    return message.empty() ? &kNothing : message.data();
}

} // namespace

UriNumbers::UriNumbers()
    : mMap{this, [](LV2_URID_Map_Handle self,
                    const char* uri) { return static_cast<UriNumbers*>(self)->numberOf(uri); }},
      mUnmap{this, [](LV2_URID_Unmap_Handle self, LV2_URID number) {
                 return static_cast<UriNumbers*>(self)->uriOf(number);
             }} {
}

LV2_URID UriNumbers::numberOf(const std::string& uri) {
    const std::lock_guard lock(mMutex);
    const auto [entry, isNew] = mNumbers.try_emplace(uri, static_cast<LV2_URID>(mUris.size() + 1));
    if (isNew) {
        mUris.push_back(entry->first.c_str());
    }
    return entry->second;
}

const char* UriNumbers::uriOf(LV2_URID number) {
    const std::lock_guard lock(mMutex);
    return number == 0 || number > mUris.size() ? nullptr : mUris[number - 1];
}

Work::Work()
    : mSchedule{this, [](LV2_Worker_Schedule_Handle self, std::uint32_t size, const void* data) {
                    static_cast<Work*>(self)->schedule(size, data);
                    return LV2_WORKER_SUCCESS;
                }} {
}

LV2_Worker_Status Work::respond(LV2_Worker_Respond_Handle self, std::uint32_t size, const void* data) {
    static_cast<Work*>(self)->mResponses.push_back(bytesOf(data, size));
    return LV2_WORKER_SUCCESS;
}

void Work::schedule(std::uint32_t size, const void* data) {
    if (mWorker != nullptr && mWorker->work != nullptr) {
        mWorker->work(mPlugin, respond, this, size, data);
    } else {
        mRequests.push_back(bytesOf(data, size));
    }
}

void Work::doRequests(LV2_Handle plugin, const LV2_Worker_Interface* worker) {
    for (const Message& request : std::exchange(mRequests, {})) {
        if (worker != nullptr && worker->work != nullptr) {
            worker->work(plugin, respond, this, static_cast<std::uint32_t>(request.size()), dataOf(request));
        }
    }
}

void Work::endRun(LV2_Handle plugin, const LV2_Worker_Interface* worker) {
    for (const Message& response : std::exchange(mResponses, {})) {
        if (worker != nullptr && worker->work_response != nullptr) {
            worker->work_response(plugin, static_cast<std::uint32_t>(response.size()), dataOf(response));
        }
    }
    if (worker != nullptr && worker->end_run != nullptr) {
        worker->end_run(plugin);
    }
}

LV2_Log_Log silentLog() {
    return {nullptr, printNothing, [](LV2_Log_Handle, LV2_URID, const char*, va_list) { return 0; }};
}

HostSide::HostSide(UriNumbers& numbers, double rateHz, std::int32_t mostFrames, Offer offer)
    : mRateHz(static_cast<float>(rateHz)),
      mLongest(mostFrames),
      mEventBytes(kEventBytes),
      mLog(silentLog()),
      mMapPath{this, [](LV2_State_Map_Path_Handle, const char* path) { return copyOf(path); },
               [](LV2_State_Map_Path_Handle, const char* path) { return copyOf(path); }},
      mFreePath{this, [](LV2_State_Free_Path_Handle, char* path) { std::free(path); }} {
    const LV2_URID integer = numbers.numberOf(LV2_ATOM__Int);
    const auto option = [&](const char* key, LV2_URID type, const void* value) {
        return LV2_Options_Option{LV2_OPTIONS_INSTANCE, 0,    numbers.numberOf(key),
                                  sizeof(std::int32_t), type, value};
    };
    mOptions = {
        option(LV2_PARAMETERS__sampleRate, numbers.numberOf(LV2_ATOM__Float), &mRateHz),
        option(LV2_BUF_SIZE__minBlockLength, integer, &mShortest),
        option(LV2_BUF_SIZE__maxBlockLength, integer, &mLongest),
        option(LV2_BUF_SIZE__nominalBlockLength, integer, &mLongest),
        option(LV2_BUF_SIZE__sequenceSize, integer, &mEventBytes),
    };
    if (offer == Offer::kUnknownToo) {
        mOptions.insert(mOptions.begin(), option(kUnknown, numbers.numberOf(kUnknown), &mEventBytes));
        mTable.push_back({kUnknown, nullptr});
    }
    mOptions.push_back({LV2_OPTIONS_INSTANCE, 0, 0, 0, 0, nullptr});
    void* const data[] = {&numbers.map(), &numbers.unmap(), mOptions.data(), &mWork.schedule(),
                          &mLog,          &mMapPath,        &mFreePath};
    for (std::size_t i = 0; i < std::size(kOffered); ++i) {
        mTable.push_back({kOffered[i], i < std::size(data) ? data[i] : nullptr});
    }
    for (const LV2_Feature& feature : mTable) {
        mFeatures.push_back(&feature);
    }
    mFeatures.push_back(nullptr);
}

bool HostSide::offers(const std::string& feature) {
    return std::ranges::find(kOffered, feature) != std::end(kOffered);
}

} // namespace varno::validate
