/// The host's own hold on an object that it hands to a module.
#ifndef VARNO_HOST_HOSTREFERENCE_H
#define VARNO_HOST_HOSTREFERENCE_H

#include "Host/ContractMonitor.h"

#include <cstdint>
#include <memory>
#include <string>

namespace varno {

/// Holds so many references that a module which gives one back too often does not destroy the object under
/// the host's feet. At the end it reports references that the module has kept or given back twice; a kept
/// object lives on.
template<class T>
class HostReference {
public:
    HostReference() = default;
    /// Takes over the one reference of a new object. `name` is a literal for messages.
    HostReference(T* object, const char* name)
        : mObject(object),
          mName(name) {
        for (std::uint32_t i = 1; i < kReserve; ++i) {
            mObject->AddRef();
        }
    }
    HostReference(const HostReference&) = delete;
    HostReference& operator=(const HostReference&) = delete;
    ~HostReference() { reset(); }

    /// Lets go of the object, if any, after counting.
    void reset() {
        if (mObject == nullptr) {
            return;
        }
        const std::uint32_t references = mObject->references();
        if (references != kReserve) {
            const std::string difference =
                references > kReserve ? std::to_string(references - kReserve) + " too many held"
                                      : std::to_string(kReserve - references) + " given back too often";
            mObject->context()->monitor->report(Contract::References, std::string("references to the ") +
                                                                          mName + ": " + difference);
        }
        T* object = mObject;
        mObject = nullptr;
        object->giveBack(references < kReserve ? references : kReserve);
    }

    T* get() const { return mObject; }
    T* operator->() const { return mObject; }
    T& operator*() const { return *mObject; }

private:
    static constexpr std::uint32_t kReserve = 1024;

    T* mObject = nullptr;
    const char* mName = "";
};

} // namespace varno

#endif
