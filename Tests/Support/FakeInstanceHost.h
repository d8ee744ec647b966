/// The object handed to a data model's Initialize, for tests.
#ifndef VARNO_FAKEINSTANCEHOST_H
#define VARNO_FAKEINSTANCEHOST_H

#include "FakeAutomation.h"
#include "FakeController.h"

namespace varno::test {

/// Leads to a controller and an automation of its own.
class FakeInstanceHost : public FakeHost {
public:
    FakeInstanceHost() {
        offer(IID_IAAXControllerV1, &controller);
        offer(IID_IAAXAutomationDelegateV1, &automation);
    }

    /// References that others hold to the host or to anything that it has handed out.
    int32_t allReferences() const { return references() + controller.references() + automation.references(); }

    FakeController controller;
    FakeAutomation automation;
};

} // namespace varno::test

#endif
