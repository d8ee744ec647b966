#include "LV2/Ports.h"

#include "DemoGain_ParameterTable.h"
#include "Host/Module.h"
#include "Tests/Formats/LV2/FrozenSymbols.h"
#include "Tests/Support/HostFixture.h"

#include <string_view>

namespace varno {
namespace {

class Ports : public HostFixture {
protected:
    Ports()
        : HostFixture(linkedEntryPoints()) {}

    std::vector<PortInfo> portsFor(std::int32_t channels) {
        InstanceSetup setup;
        setup.channels = channels;
        return portsOf(Instance(module(), setup));
    }

    static std::vector<std::string> symbolsOf(const std::vector<PortInfo>& ports) {
        std::vector<std::string> symbols;
        for (const PortInfo& port : ports) {
            symbols.push_back(port.symbol);
        }
        return symbols;
    }
};

TEST_F(Ports, haveTheSymbolsAndTheOrderOfEver) {
    EXPECT_EQ(symbolsOf(portsFor(1)), test::frozenSymbols(1));
    EXPECT_EQ(symbolsOf(portsFor(2)), test::frozenSymbols(2));
}

TEST(PluginUris, areThoseOfEver) {
    ASSERT_EQ(kPluginUris.size(), 2U);
    EXPECT_STREQ(kPluginUris[0].uri, "urn:morvak:varno-s#mono");
    EXPECT_EQ(kPluginUris[0].channels, 1);
    EXPECT_STREQ(kPluginUris[1].uri, "urn:morvak:varno-s#stereo");
    EXPECT_EQ(kPluginUris[1].channels, 2);
    EXPECT_STREQ(kWindowUri, "urn:morvak:varno-s#ui");
}

TEST_F(Ports, areNumberedOneByOne) {
    for (const std::int32_t channels : {1, 2}) {
        std::uint32_t index = 0;
        for (const PortInfo& port : portsFor(channels)) {
            EXPECT_EQ(port.index, index++);
        }
    }
}

TEST_F(Ports, tellWhichItemOfTheModuleTheyStandFor) {
    const std::vector<PortInfo> ports = portsFor(2);
    EXPECT_EQ(portWithSymbol(ports, "in_r")->kind, PortKind::kAudioIn);
    EXPECT_EQ(portWithSymbol(ports, "in_r")->item, 1U);
    EXPECT_EQ(portWithSymbol(ports, "out_l")->kind, PortKind::kAudioOut);
    EXPECT_EQ(portWithSymbol(ports, "out_l")->item, 0U);
    EXPECT_EQ(portWithSymbol(ports, "enabled")->kind, PortKind::kEnabled);
    EXPECT_EQ(portWithSymbol(ports, "latency")->kind, PortKind::kLatency);
    EXPECT_EQ(portWithSymbol(ports, "quality")->kind, PortKind::kQuality);
    EXPECT_EQ(portWithSymbol(ports, "outrms")->kind, PortKind::kMeter);
    EXPECT_EQ(portWithSymbol(ports, "outrms")->item, static_cast<std::uint32_t>(eMeterTap_Output));
    EXPECT_EQ(portWithSymbol(ports, "volume")->kind, PortKind::kParameter);
    EXPECT_EQ(portWithSymbol(ports, "volume")->parameterID, "Volume");
}

TEST_F(Ports, holdEveryParameterButTheMasterBypass) {
    const std::vector<PortInfo> ports = portsFor(1);
    for (const SDemoGain_Parameter& row : kDemoGain_Parameters) {
        const PortInfo* port = portOfParameter(ports, row.mIdentifier);
        const bool isMasterBypass = std::string_view(row.mIdentifier) == cDemoGain_MasterBypassID;
        ASSERT_EQ(port == nullptr, isMasterBypass) << row.mIdentifier;
        if (port != nullptr) {
            EXPECT_STREQ(kDemoGain_Parameters[port->item].mIdentifier, row.mIdentifier);
        }
    }
}

TEST_F(Ports, areNotFoundByNamesOfNone) {
    const std::vector<PortInfo> ports = portsFor(2);
    EXPECT_EQ(portWithSymbol(ports, "Gain"), nullptr);
    EXPECT_EQ(portWithSymbol(ports, ""), nullptr);
    EXPECT_EQ(portOfParameter(ports, "gain"), nullptr);
    EXPECT_EQ(portOfParameter(ports, ""), nullptr);
}

TEST_F(Ports, haveSymbolsThatHostsTake) {
    for (const PortInfo& port : portsFor(2)) {
        EXPECT_EQ(port.symbol.find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_"), std::string::npos);
        EXPECT_FALSE(port.symbol.front() >= '0' && port.symbol.front() <= '9');
    }
}

} // namespace
} // namespace varno
