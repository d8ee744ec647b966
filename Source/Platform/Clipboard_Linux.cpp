#include "Platform/Clipboard.h"

#include "Platform/SharedInstance.h"
#include "Platform/X11Clipboard.h"

namespace varno {

std::shared_ptr<Clipboard> Clipboard::shared() {
    static std::weak_ptr<Clipboard> instance;
    return sharedInstance(instance, [] { return std::make_shared<X11Clipboard>(RunLoop::shared()); });
}

} // namespace varno
