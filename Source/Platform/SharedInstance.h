/// One object for all who hold it.
#ifndef VARNO_SOURCE_PLATFORM_SHAREDINSTANCE_H
#define VARNO_SOURCE_PLATFORM_SHAREDINSTANCE_H

#include <memory>

namespace varno {

/// What the slot knows, or what make() gives where the slot knows nothing that is still held. [main]
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
