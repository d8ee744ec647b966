/// One object shared by all its holders.
#ifndef VARNO_SOURCE_PLATFORM_SHAREDINSTANCE_H
#define VARNO_SOURCE_PLATFORM_SHAREDINSTANCE_H

#include <memory>

namespace varno {

/// The object in the slot, or a new one of make() where the slot's is no longer held. [main]
template<typename Type, typename Make>
std::shared_ptr<Type> sharedInstance(std::weak_ptr<Type>& slot, Make make) {
    std::shared_ptr<Type> instance = slot.lock();
    if (!instance) {
        instance = make();
        slot = instance;
    }
    return instance;
}

} // namespace varno

#endif
