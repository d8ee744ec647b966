// The bundle as a host opens it.
#include "Host/Module.h"
#include "Host/Instance.h"

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <fstream>
#include <iterator>

using namespace varno;

namespace {

// Whether the bundle's binary is in this process.
bool isLoaded() {
    void* const handle = dlopen(VARNO_MODULE_BINARY, RTLD_NOW | RTLD_NOLOAD);
    if (handle != nullptr) {
        dlclose(handle);
    }
    return handle != nullptr;
}

std::string contentOf(const std::filesystem::path& path) {
    std::ifstream file(path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

void expectNoViolation(ContractMonitor& monitor) {
    for (const Violation& violation : monitor.takeViolations()) {
        ADD_FAILURE() << contractName(violation.contract) << ": " << violation.text;
    }
}

TEST(Module, describesItself) {
    const auto module = Module::open(VARNO_BUNDLE);
    const ModuleDescription& description = module->description();
    EXPECT_EQ(description.sdkVersion, 0x00000204013449EAU);
    EXPECT_EQ(description.manufacturerName, "Morvak");
    ASSERT_EQ(description.effects.size(), 1U);
    EXPECT_EQ(description.effects[0].id, "com.morvak.varno-s.aax");
    EXPECT_EQ(description.effects[0].variants.size(), 2U);
    EXPECT_EQ(descriptionProblems(description), std::vector<std::string>{});
    expectNoViolation(*module->monitor());
}

TEST(Module, makesBothVariants) {
    const auto module = Module::open(VARNO_BUNDLE);
    for (const std::int32_t channels : {1, 2}) {
        InstanceSetup setup;
        setup.channels = channels;
        Instance instance(module, setup);
        std::vector<float> samples(512, 0.25F);
        float* const buffers[] = {samples.data(), samples.data()};
        instance.process(buffers, buffers, 512);
        EXPECT_NE(samples.back(), 0.25F);
        EXPECT_GT(module->liveObjects(), 0);
    }
    EXPECT_EQ(module->liveObjects(), 0);
    expectNoViolation(*module->monitor());
}

TEST(Module, leavesNothingBehindHoweverOftenItIsOpened) {
    ASSERT_FALSE(isLoaded());
    for (int i = 0; i < 100; ++i) {
        std::shared_ptr<ContractMonitor> monitor;
        {
            const auto module = Module::open(VARNO_BUNDLE);
            monitor = module->monitor();
            ASSERT_TRUE(isLoaded());
            const Instance instance(module, {});
        }
        expectNoViolation(*monitor);
        ASSERT_FALSE(isLoaded()) << "time " << i;
    }
}

TEST(Module, bringsItsMetadata) {
    const std::string metadata = contentOf(std::filesystem::path(VARNO_BUNDLE) / "Contents/Info.plist");
    EXPECT_NE(metadata.find("<string>com.morvak.varno-s</string>"), std::string::npos);
    EXPECT_NE(metadata.find("<key>CFBundleShortVersionString</key>\n\t<string>" VARNO_VERSION "</string>"),
              std::string::npos);
    EXPECT_EQ(metadata.find('@'), std::string::npos) << "every place of the template is filled in";
}

TEST(Module, bringsThePageTableThatItNames) {
    const auto module = Module::open(VARNO_BUNDLE);
    const ResourceDescription* const pageTable =
        module->description().effects.at(0).resource(AAX_eResourceType_PageTable);
    ASSERT_NE(pageTable, nullptr);
    EXPECT_EQ(pageTable->fileName, "Varno-S.xml");
    EXPECT_EQ(contentOf(module->resourcePath(pageTable->fileName)), contentOf(VARNO_PAGE_TABLE));
    EXPECT_NE(contentOf(VARNO_PAGE_TABLE), "");
}

} // namespace
