// The table's lists, and the documents that show the table.
#include "DemoGain_ParameterTable.h"

#include "DemoGain_ValueText.h"
#include "DemoGain_ViewLayout.h"

#include <gmock/gmock.h>

#include <cstdio>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

using testing::ElementsAre;
using testing::HasSubstr;

// The lists that hosts and saved settings rely on, written down a second time.

template<class List>
std::vector<std::string> identifiers(const List& list) {
    std::vector<std::string> found;
    for (const SDemoGain_Parameter* const parameter : list) {
        found.emplace_back(parameter->mIdentifier);
    }
    return found;
}

TEST(DemoGain_ParameterTable, listsTheControlsAsTheViewAddsThem) {
    EXPECT_THAT(identifiers(kDemoGain_ControlOrder),
                ElementsAre("Gain", "Volume", "Atk", "Rls", "Hot", "Mix", "HP", "Band", "UK", "ASw", "LinkSw",
                            "HSw", "Ratio"));
}

TEST(DemoGain_ParameterTable, listsTheUpdatesAsTheEditorComparesThem) {
    EXPECT_THAT(identifiers(kDemoGain_UpdateOrder),
                ElementsAre("ASw", "Gain", "Volume", "HP", "Band", "Atk", "Rls", "UK", "LinkSw", "HSw", "Hot",
                            "Ratio", "Mix"));
}

TEST(DemoGain_ParameterTable, listsTheSettingsAsTheTextDoes) {
    EXPECT_THAT(identifiers(kDemoGain_PresetOrder),
                ElementsAre("Gain", "Volume", "HP", "Band", "Atk", "Rls", "UK", "Hot", "Ratio", "Mix", "ASw",
                            "HSw", "LinkSw"));
}

TEST(DemoGain_ParameterTable, findsAParameterByItsWholeIdentifierAlone) {
    EXPECT_EQ(DemoGain_FindParameter("Volume"), &kDemoGain_Parameters[8]);
    for (const char* id : {"", "volume", "Vol", "Volume ", "PR1K"}) {
        EXPECT_EQ(DemoGain_FindParameter(id), nullptr) << id;
    }
}

TEST(DemoGain_ParameterTable, joinsEachControlToItsParameter) {
    ASSERT_EQ(DemoGain_ViewLayout::kControls.size(), kDemoGain_ControlOrder.size() + 4);
    for (std::size_t i = 0; i < kDemoGain_ControlOrder.size(); ++i) {
        EXPECT_STREQ(DemoGain_ViewLayout::kControls[i].mID, kDemoGain_ControlOrder[i]->mIdentifier);
    }
    for (const DemoGain_ViewLayout::Control& control : DemoGain_ViewLayout::kOtherControls) {
        EXPECT_EQ(DemoGain_FindParameter(control.mID), nullptr) << control.mID;
    }
}

// The documents.

std::vector<std::string> linesOf(const char* file) {
    std::ifstream document(file);
    std::vector<std::string> lines;
    for (std::string line; std::getline(document, line);) {
        lines.push_back(line);
    }
    EXPECT_FALSE(lines.empty()) << file;
    return lines;
}

// The lines of the README between its two marks of the parameter table, without the marks.
std::vector<std::string> tableInReadme() {
    const std::vector<std::string> lines = linesOf(VARNO_README);
    const auto begin = std::find(lines.begin(), lines.end(), "<!-- parameters -->");
    const auto end = std::find(begin, lines.end(), "<!-- /parameters -->");
    if (end == lines.end()) {
        ADD_FAILURE() << "README.md has no block from <!-- parameters --> to <!-- /parameters -->";
        return {};
    }
    return {begin + 1, end};
}

std::vector<std::string> tableFromCode() {
    std::vector<std::string> lines = {"| Index | Identifier | Name | Steps | Default | What it does |",
                                      "|---|---|---|---|---|---|"};
    int index = 0;
    for (const SDemoGain_Parameter& parameter : kDemoGain_Parameters) {
        std::ostringstream line;
        line << "| " << index++ << " | `" << parameter.mIdentifier << "` | " << parameter.mName << " | "
             << parameter.mSteps << " | " << parameter.mDefault << " | " << parameter.mHelp << " |";
        lines.push_back(line.str());
    }
    return lines;
}

TEST(Readme, listsTheParametersAsTheyAre) {
    const std::vector<std::string> expected = tableFromCode();
    std::string wanted = "the table in README.md must be\n";
    for (const std::string& line : expected) {
        wanted.append(line).append("\n");
    }
    EXPECT_EQ(tableInReadme(), expected) << wanted;
}

// The row of the manual's numbered list of controls, or nothing.
std::string rowInManual(std::size_t number) {
    const std::string start = "| " + std::to_string(number) + " | **";
    for (const std::string& line : linesOf(VARNO_MANUAL)) {
        if (line.starts_with(start)) {
            return line;
        }
    }
    return {};
}

std::string legendOf(const SDemoGain_Parameter& parameter) {
    const auto& [first, second] = parameter.mLegend;
    return second != nullptr ? std::string(first) + " " + second : first;
}

TEST(Manual, namesTheControlsInTheirOrder) {
    for (std::size_t i = 0; i < kDemoGain_ControlOrder.size(); ++i) {
        EXPECT_THAT(rowInManual(i + 1), HasSubstr("| **" + legendOf(*kDemoGain_ControlOrder[i]) + "** |"));
    }
}

TEST(Manual, givesTheRangeOfTheLevels) {
    for (std::size_t i = 0; i < kDemoGain_ControlOrder.size(); ++i) {
        const SDemoGain_Unit& unit = kDemoGain_ControlOrder[i]->mUnit;
        if (unit.mSymbol == std::string("dB")) {
            std::ostringstream range;
            range << unit.mLow << " to +" << unit.mHigh << " " << unit.mSymbol;
            EXPECT_THAT(rowInManual(i + 1), HasSubstr(range.str()));
            EXPECT_THAT(kDemoGain_ControlOrder[i]->mHelp, HasSubstr(range.str()));
        }
    }
}

// A time as the manual rounds it.
std::string roundedTime(const SDemoGain_Parameter& parameter, double normalized) {
    const double ms = DemoGain_ValueText::InUnit(parameter, normalized);
    char text[32];
    if (ms >= 100.0) {
        std::snprintf(text, sizeof text, "%.1f s", ms / 1000.0);
    } else {
        std::snprintf(text, sizeof text, ms < 10.0 ? "%.1f ms" : "%.0f ms", ms);
    }
    return text;
}

TEST(Manual, givesTheTimesOfTheKnobs) {
    for (const std::size_t place : {std::size_t{2}, std::size_t{3}}) {
        const SDemoGain_Parameter& parameter = *kDemoGain_ControlOrder[place];
        ASSERT_STREQ(parameter.mUnit.mSymbol, "ms");
        EXPECT_THAT(rowInManual(place + 1), HasSubstr(roundedTime(parameter, 0.0) + " at the left end, " +
                                                      roundedTime(parameter, 0.5) + " in the middle, " +
                                                      roundedTime(parameter, 1.0) + " at the right end"));
    }
}

TEST(Manual, hasARowForEachCurve) {
    const std::vector<std::string> lines = linesOf(VARNO_MANUAL);
    for (const char* const curve : kDemoGain_CurveTexts) {
        const std::string start = std::string("| ") + curve + " | ";
        EXPECT_TRUE(std::any_of(lines.begin(), lines.end(), [&](const std::string& line) {
            return line.starts_with(start) && line.find(" dB | ") != std::string::npos;
        })) << curve;
    }
}

} // namespace
