#include "Platform/Bundle.h"

#include <CoreFoundation/CoreFoundation.h>
#include <array>
#include <climits>
#include <memory>

namespace varno {

namespace {

struct Release {
    void operator()(CFTypeRef object) const { CFRelease(object); }
};

template<typename Ref>
using Owned = std::unique_ptr<std::remove_pointer_t<Ref>, Release>;

} // namespace

std::optional<Bundle> moduleBundle(const std::string& identifier) {
    const Owned<CFStringRef> name(
        CFStringCreateWithCString(kCFAllocatorDefault, identifier.c_str(), kCFStringEncodingUTF8));
    const CFBundleRef bundle = name ? CFBundleGetBundleWithIdentifier(name.get()) : nullptr;
    if (bundle == nullptr) {
        return std::nullopt;
    }
    const Owned<CFURLRef> folder(CFBundleCopyResourcesDirectoryURL(bundle));
    std::array<UInt8, PATH_MAX> path{};
    if (!folder || !CFURLGetFileSystemRepresentation(folder.get(), true, path.data(), path.size())) {
        path = {}; // the system looks resources up through the bundle
    }
    return Bundle{reinterpret_cast<const char*>(path.data()), bundle};
}

} // namespace varno
