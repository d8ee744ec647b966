/// The object handed to a data model's Initialize, for tests.
#ifndef VARNO_TESTS_SUPPORT_FAKEINSTANCEHOST_H
#define VARNO_TESTS_SUPPORT_FAKEINSTANCEHOST_H

#include "Tests/Support/FakeAutomation.h"
#include "Tests/Support/FakeController.h"

namespace varno::test {

/// Leads to a controller and an automation of its own.
class FakeInstanceHost : public FakeHost {
public:
    FakeInstanceHost() {
        offer(IID_IAAXControllerV1, &controller);
        offer(IID_IAAXAutomationDelegateV1, &automation);
    }

    /// References that others hold to the host or to anything that it has handed out.
    std::int32_t allReferences() const {
        return references() + controller.references() + automation.references();
    }

    FakeController controller;
    FakeAutomation automation;
};

} // namespace varno::test

#endif
