#include "Surround/Settings/NumberText.h"

#include <gtest/gtest.h>

#include <cmath>

namespace varno {
namespace {

TEST(NumberText, ReadsNumbers) {
    EXPECT_EQ(numberFromText<double>("0.25"), 0.25);
    EXPECT_EQ(numberFromText<double>("-1e3"), -1000.0);
    EXPECT_EQ(numberFromText<int>("42"), 42);
    EXPECT_TRUE(std::isinf(numberFromText<double>("inf").value()));
    EXPECT_TRUE(std::isnan(numberFromText<double>("nan").value()));
}

TEST(NumberText, TakesTheWholeTextOrNothing) {
    for (const char* text : {"", " 1", "1 ", "1x", "x", "+1", "0,5", "--1"}) {
        EXPECT_EQ(numberFromText<double>(text), std::nullopt) << text;
        EXPECT_EQ(numberFromText<int>(text), std::nullopt) << text;
    }
    EXPECT_EQ(numberFromText<int>("1.5"), std::nullopt);
}

TEST(NumberText, WhatDoesNotFitIsNone) {
    EXPECT_EQ(numberFromText<int>("99999999999"), std::nullopt);
    EXPECT_EQ(numberFromText<double>("1e999"), std::nullopt);
}

TEST(NumberText, WritesWhatItReads) {
    for (const double number : {0.0, 1.0, 0.1, 1.0 / 3.0, -2.2250738585072014e-308, 1e300}) {
        EXPECT_EQ(numberFromText<double>(textFromNumber(number)), number);
    }
    EXPECT_EQ(textFromNumber(0.25), "0.25");
    EXPECT_EQ(textFromNumber(0.1F), "0.1");
    EXPECT_EQ(textFromNumber(0.1, std::chars_format::fixed, 6), "0.100000");
}

} // namespace
} // namespace varno
