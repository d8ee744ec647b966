#include "DemoGain_ParameterTable.h"

#include <gtest/gtest.h>

#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

// The lines of the README between its two marks of the parameter table, without the marks.
std::vector<std::string> tableInReadme() {
    std::ifstream readme(VARNO_README);
    std::vector<std::string> lines;
    bool isInside = false;
    for (std::string line; std::getline(readme, line);) {
        if (line == "<!-- /parameters -->") {
            return lines;
        }
        if (isInside) {
            lines.push_back(line);
        }
        isInside = isInside || line == "<!-- parameters -->";
    }
    ADD_FAILURE() << "README.md has no block from <!-- parameters --> to <!-- /parameters -->";
    return {};
}

// What the lines of the table begin with. Their last column is free.
std::vector<std::string> tableFromCode() {
    std::vector<std::string> lines = {"| Index | Identifier | Name | Steps | Default |",
                                      "|---|---|---|---|---|"};
    int index = 0;
    for (const SDemoGain_Parameter& parameter : kDemoGain_Parameters) {
        std::ostringstream line;
        line << "| " << index++ << " | `" << parameter.mIdentifier << "` | " << parameter.mName << " | "
             << parameter.mSteps << " | " << parameter.mDefault << " |";
        lines.push_back(line.str());
    }
    return lines;
}

TEST(Readme, listsTheParametersAsTheyAre) {
    const std::vector<std::string> expected = tableFromCode();
    std::vector<std::string> found = tableInReadme();
    std::string wanted = "the table in README.md must begin its lines with\n";
    for (const std::string& line : expected) {
        wanted.append(line).append("\n");
    }
    for (std::size_t i = 0; i < found.size() && i < expected.size(); ++i) {
        found[i].resize(std::min(found[i].size(), expected[i].size()));
    }
    EXPECT_EQ(found, expected) << wanted;
}

} // namespace
