/// Tests with a module in the reference host, which checks its contracts.
#ifndef VARNO_TESTS_SUPPORT_HOSTFIXTURE_H
#define VARNO_TESTS_SUPPORT_HOSTFIXTURE_H

#include "Host/ContractMonitor.h"
#include "Host/Instance.h"
#include "Host/Module.h"

#include <filesystem>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <string>
#include <vector>

namespace varno {

/// Opens a module at its first use and ends it at tear-down, where the test fails if a contract was broken
/// and not taken by `takeViolations`, or if something that the test expected did not happen.
/// Everything made from the module must be destroyed before: instances are local to a test.
class HostFixture : public ::testing::Test {
protected:
    /// A module that is linked in.
    explicit HostFixture(const ModuleEntryPoints& entryPoints)
        : mOpen([entryPoints](const HostOptions& offered) { return Module::linked(entryPoints, offered); }) {}
    /// A bundle.
    explicit HostFixture(const std::filesystem::path& bundle)
        : mOpen([bundle](const HostOptions& offered) { return Module::open(bundle, offered); }) {}

    /// What the host offers; to be changed before the module's first use.
    HostOptions options;

    /// The module.
    const std::shared_ptr<Module>& module() {
        if (mModule == nullptr) {
            options.monitor = mMonitor;
            mModule = mOpen(options);
        }
        return mModule;
    }

    /// Ends the module now.
    void endModule() { mModule.reset(); }

    /// Receives the violations.
    ContractMonitor& monitor() { return *mMonitor; }

    /// Returns and removes the violations so far, as "contract: text".
    std::vector<std::string> takeViolations() {
        std::vector<std::string> texts;
        for (const Violation& violation : mMonitor->takeViolations()) {
            texts.push_back(std::string(contractName(violation.contract)) + ": " + violation.text);
        }
        return texts;
    }

    void TearDown() override {
        const std::weak_ptr<Module> watch = mModule;
        mModule.reset();
        EXPECT_TRUE(watch.expired()) << "something made from the module is still alive";
        for (const std::string& text : takeViolations()) {
            ADD_FAILURE() << "broken contract: " << text;
        }
        for (const std::string& text : mMonitor->unmetExpectations()) {
            ADD_FAILURE() << "never happened: " << text;
        }
    }

private:
    std::function<std::shared_ptr<Module>(const HostOptions&)> mOpen;
    std::shared_ptr<ContractMonitor> mMonitor = std::make_shared<ContractMonitor>();
    std::shared_ptr<Module> mModule;
};

} // namespace varno

#endif
