#include "CLAP/Window/HostDesktop.h"

#include <algorithm>
#include <utility>

namespace varno {

HostDesktop::HostDesktop(const HostCalls& host, double scale)
    : mHost(host),
      mDescriptors(host.extension<clap_host_posix_fd_support_t>(CLAP_EXT_POSIX_FD_SUPPORT)),
      mScale(scale) {
}

HostDesktop::~HostDesktop() {
    while (!mWatches.empty()) {
        HostDesktop::unwatch(mWatches.back().descriptor, mWatches.back().owner);
    }
}

bool HostDesktop::isWatched(int descriptor) const {
    return std::ranges::find(mWatches, descriptor, &Watch::descriptor) != mWatches.end();
}

// A host knows a descriptor once, however many owners it has here.
void HostDesktop::watch(int descriptor, const void* owner, Wake wake) {
    if (mDescriptors == nullptr) {
        return;
    }
    const bool isNew = !isWatched(descriptor);
    mWatches.push_back({descriptor, owner, std::move(wake)});
    if (isNew) {
        mDescriptors->register_fd(&mHost.table(), descriptor, CLAP_POSIX_FD_READ);
    }
}

void HostDesktop::unwatch(int descriptor, const void* owner) {
    const auto removed = std::erase_if(
        mWatches, [&](const Watch& watch) { return watch.descriptor == descriptor && watch.owner == owner; });
    if (removed > 0 && !isWatched(descriptor)) {
        mDescriptors->unregister_fd(&mHost.table(), descriptor);
    }
}

// What is called may end watches and begin others.
void HostDesktop::ready(int descriptor) {
    std::vector<std::pair<const void*, Wake>> due;
    for (const Watch& watch : mWatches) {
        if (watch.descriptor == descriptor) {
            due.emplace_back(watch.owner, watch.wake);
        }
    }
    for (const auto& [owner, wake] : due) {
        const bool isStillThere = std::ranges::any_of(mWatches, [&, of = owner](const Watch& watch) {
            return watch.descriptor == descriptor && watch.owner == of;
        });
        if (isStillThere) {
            wake();
        }
    }
}

} // namespace varno
