// The labelled values of ports, compared with what the effect computes from the values.
#include "LV2/Description/PortStatement.h"

#include "DemoGain_Coefficients.h"
#include "DemoGain_ParameterTable.h"
#include "Host/Module.h"
#include "Tests/Support/HostFixture.h"

#include <gtest/gtest.h>
#include <map>
#include <regex>
#include <string>

namespace varno {
namespace {

class PortStatement : public HostFixture {
protected:
    PortStatement()
        : HostFixture(linkedEntryPoints()) {}

    // The scale points of every parameter's port: values by labels.
    std::map<std::string, std::map<std::string, float>> scalePoints() {
        const Instance instance(module(), {});
        const std::regex point("rdfs:label \"([^\"]*)\" ; rdf:value ([0-9.]+)");
        std::map<std::string, std::map<std::string, float>> points;
        for (const PortInfo& port : portsOf(instance)) {
            if (port.kind == PortKind::kParameter) {
                const std::string text = portStatement(instance, kPluginUris[1], port);
                auto& own = points[port.parameterID];
                for (std::sregex_iterator found(text.begin(), text.end(), point), end; found != end;
                     ++found) {
                    own[(*found)[1]] = std::stof((*found)[2]);
                }
            }
        }
        return points;
    }
};

TEST_F(PortStatement, labelsLevelsByTheLawOfTheEffect) {
    for (const auto& [id, points] : scalePoints()) {
        const bool isLevel = id == cDemoGain_GainID || id == cDemoGain_VolumeID;
        EXPECT_EQ(points.contains("0 dB"), isLevel) << id;
        if (isLevel) {
            EXPECT_EQ(points.size(), 11U);
            EXPECT_EQ(points.at("-20 dB"), 0.0F);
            EXPECT_EQ(points.at("+20 dB"), 1.0F);
            for (const auto& [label, value] : points) {
                EXPECT_NEAR(DemoGain_LevelDB(value), std::stof(label), 1e-5F) << label;
            }
        }
    }
}

// A scale point's value chooses the curve that its label names.
TEST_F(PortStatement, numbersTheCurvesAsTheRoutineDoes) {
    for (const auto& [id, points] : scalePoints()) {
        EXPECT_EQ(points.contains("Curve 1"), id == cDemoGain_RatioID) << id;
    }
    const auto curves = scalePoints().at(cDemoGain_RatioID);
    EXPECT_EQ(curves.size(), kDemoGain_CurveSteps);
    for (int curve = 0; curve < static_cast<int>(kDemoGain_CurveSteps); ++curve) {
        EXPECT_EQ(DemoGain_CurveIndex(curves.at("Curve " + std::to_string(curve + 1))), curve);
    }
    EXPECT_EQ(curves.at("Curve 5"), 0.5F) << "the default, which a host shows as one of the choices";
}

TEST_F(PortStatement, labelsTheStatesOfSwitchesAlone) {
    for (const auto& [id, points] : scalePoints()) {
        const bool isSwitch = DemoGain_FindParameter(id)->mSteps == kDemoGain_SwitchSteps;
        EXPECT_EQ(points.contains("Off") && points.contains("On"), isSwitch) << id;
    }
}

} // namespace
} // namespace varno
