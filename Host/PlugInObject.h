/// An object of the plug-in, made by one of its creation procedures.
#ifndef VARNO_HOST_PLUGINOBJECT_H
#define VARNO_HOST_PLUGINOBJECT_H

#include "AAX.h"
#include "ACF/ACFPtr.h"
#include "Host/ContractMonitor.h"
#include "Host/HostError.h"

#include <memory>
#include <string>

namespace varno {

/// Owns a data model or an editor and keeps the order: created, initialised, uninitialised, released. Object
/// is the interface that the host uses, with Initialize and Uninitialize. [main]
template<class Object>
class PlugInObject {
public:
    /// `name` is a literal for messages.
    PlugInObject(std::shared_ptr<ContractMonitor> monitor, const char* name)
        : mMonitor(std::move(monitor)),
          mName(name) {}
    PlugInObject(const PlugInObject&) = delete;
    PlugInObject& operator=(const PlugInObject&) = delete;
    ~PlugInObject() { end(); }

    /// Makes the object. False when the procedure makes none. Throws HostError when what it makes does not
    /// answer to the interface `iid`.
    bool create(AAX_CCreateObjectProc procedure, const acfIID& iid) {
        auto made = ACFPtr<IACFUnknown>::Retain(procedure());
        if (!made) {
            return false;
        }
        mObject = ACFPtr<Object>::Query(made.Get(), iid);
        if (!mObject) {
            throw HostError(std::string("the ") + mName + " does not answer to its interface");
        }
        return true;
    }

    /// Initialises the object. Throws HostError when it fails.
    void initialize(IACFUnknown& host) {
        const AAX_Result result = mObject->Initialize(&host);
        // An object whose initialisation failed half-way still has resources to release.
        mIsInitialized = true;
        if (result != AAX_SUCCESS) {
            throw HostError(std::string("the ") + mName + " cannot be initialised: result " +
                            std::to_string(result));
        }
    }

    /// The object, to be used. Reports a violation and throws HostError before its initialisation.
    Object& use() const {
        if (!mIsInitialized) {
            const std::string text = std::string("the ") + mName + " was called before its initialisation";
            mMonitor->report(Contract::kLifecycle, text);
            throw HostError(text);
        }
        return *mObject;
    }

    /// Ends the object, if there is one. Reports a violation when another reference to it is left.
    void end() {
        if (!mObject) {
            return;
        }
        if (mIsInitialized) {
            mObject->Uninitialize();
            mIsInitialized = false;
        }
        const std::uint32_t left = mObject.Detach()->Release();
        if (left != 0) {
            mMonitor->report(Contract::kReferences, std::string("references to the ") + mName + ": " +
                                                        std::to_string(left) + " held at its end");
        }
    }

    /// The object as root interface, borrowed; null when there is none.
    IACFUnknown* unknown() const { return mObject.Get(); }

private:
    std::shared_ptr<ContractMonitor> mMonitor;
    const char* mName;
    ACFPtr<Object> mObject;
    bool mIsInitialized = false;
};

} // namespace varno

#endif
