#include "ACF/CACFUnknown.h"

constinit std::atomic<int32_t> CACFUnknown::m_ActiveObjects{0};

CACFUnknown::CACFUnknown(IACFUnknown* outer)
    : m_OuterUnknown(outer != nullptr ? outer : &m_PrivateUnknown),
      m_PrivateUnknown(this) {
    m_ActiveObjects.fetch_add(1);
}

CACFUnknown::~CACFUnknown() {
    m_ActiveObjects.fetch_sub(1);
}

ACFRESULT CACFUnknown::InitializeInstance(IACFUnknown* /*host*/) {
    return ACF_OK;
}

void CACFUnknown::FinalRelease() {
}

void CACFUnknown::ReclaimMemory() {
    delete this;
}

ACFRESULT CACFUnknown::InternalQueryInterface(const acfIID& iid, void** outObject) {
    *outObject = nullptr;
    if (!(iid == IID_IACFUnknown)) {
        return ACF_E_NOINTERFACE;
    }
    m_PrivateUnknown.AddRef();
    *outObject = static_cast<IACFUnknown*>(&m_PrivateUnknown);
    return ACF_OK;
}

uint32_t CACFUnknown::InternalAddRef() {
    return m_RefCount.fetch_add(1) + 1;
}

uint32_t CACFUnknown::InternalRelease() {
    const uint32_t count = m_RefCount.fetch_sub(1) - 1;
    if (count == 0) {
        // One reference is held during the call: what FinalRelease releases may still reference this object
        // and release it again, which must not destroy it a second time.
        m_RefCount.fetch_add(1);
        FinalRelease();
        ReclaimMemory();
    }
    return count;
}

int32_t CACFUnknown::GetActiveObjectCount() {
    return m_ActiveObjects.load();
}

ACFRESULT CACFUnknown::PrivateUnknown::QueryInterface(const acfIID& iid, void** outObject) {
    return m_Owner->InternalQueryInterface(iid, outObject);
}

uint32_t CACFUnknown::PrivateUnknown::AddRef() {
    return m_Owner->InternalAddRef();
}

uint32_t CACFUnknown::PrivateUnknown::Release() {
    return m_Owner->InternalRelease();
}
