// The table of ports' symbols and texts. That each parameter has a row is checked while compiling.
#include "LV2/PortTexts.h"

#include <gtest/gtest.h>
#include <set>
#include <string_view>

namespace varno {
namespace {

TEST(PortTexts, areFoundByParameterAndMeter) {
    for (const SDemoGain_Parameter& row : kDemoGain_Parameters) {
        if (std::string_view(row.mIdentifier) != cDemoGain_MasterBypassID) {
            EXPECT_EQ(portText(kParameterPorts, row.mIdentifier).name, row.mIdentifier);
        }
    }
    EXPECT_STREQ(portText(kMeterPorts, "InRMS").symbol, "inrms");
}

TEST(PortTexts, areThereForNothingElse) {
    EXPECT_THROW(portText(kParameterPorts, "gain"), std::out_of_range);
    EXPECT_THROW(portText(kParameterPorts, cDemoGain_MasterBypassID), std::out_of_range);
    EXPECT_THROW(portText(kMeterPorts, "Gain"), std::out_of_range);
}

TEST(PortTexts, haveASymbolEachThatHostsAccept) {
    std::set<std::string_view> symbols;
    const auto add = [&](std::span<const PortText> rows) {
        for (const PortText& row : rows) {
            EXPECT_TRUE(symbols.insert(row.symbol).second) << row.symbol;
            EXPECT_EQ(std::string_view(row.symbol).find_first_not_of("abcdefghijklmnopqrstuvwxyz0123456789_"),
                      std::string_view::npos)
                << row.symbol;
            EXPECT_STRNE(row.comment, "");
        }
    };
    add(kParameterPorts);
    add(kMeterPorts);
}

} // namespace
} // namespace varno
