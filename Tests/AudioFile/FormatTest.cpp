#include "AudioFile/Format.h"

#include <gtest/gtest.h>

namespace varno::test {
namespace {

TEST(SampleFormatTest, OptionsNameTheirFormats) {
    EXPECT_EQ(sampleFormatFromName("pcm16"), SampleFormat::kPcm16);
    EXPECT_EQ(sampleFormatFromName("pcm24"), SampleFormat::kPcm24);
    EXPECT_EQ(sampleFormatFromName("pcm32"), SampleFormat::kPcm32);
    EXPECT_EQ(sampleFormatFromName("float"), SampleFormat::kFloat);
    EXPECT_EQ(sampleFormatFromName("double"), SampleFormat::kDouble);
}

TEST(SampleFormatTest, NothingElseIsAnOption) {
    for (const char* text : {"", "pcm8", "pcm", "PCM16", "pcm16 ", "u-law", "Vorbis", "16"}) {
        EXPECT_EQ(sampleFormatFromName(text), std::nullopt) << text;
    }
}

TEST(SampleFormatTest, EachFormatNamesItself) {
    for (const char* text : {"pcm16", "pcm24", "pcm32", "float", "double"}) {
        EXPECT_STREQ(sampleFormatName(*sampleFormatFromName(text)), text);
    }
    EXPECT_STREQ(sampleFormatName(SampleFormat::kVorbis), "Vorbis");
    EXPECT_STREQ(sampleFormatName(SampleFormat::kOther), "a compressed format");
}

TEST(SampleFormatTest, BitsAndBytes) {
    EXPECT_EQ(integerBits(SampleFormat::kPcm24), 24);
    EXPECT_EQ(storedBytes(SampleFormat::kPcm24), 3);
    EXPECT_EQ(signalBits(SampleFormat::kPcm24), 24);
    EXPECT_EQ(integerBits(SampleFormat::kDouble), 0);
    EXPECT_EQ(storedBytes(SampleFormat::kDouble), 8);
    EXPECT_EQ(signalBits(SampleFormat::kDouble), 25); // single precision on the signal path
    EXPECT_EQ(storedBytes(SampleFormat::kOpus), 0);
}

TEST(SampleFormatTest, SinglePrecisionHoldsTwentyFourBits) {
    using enum SampleFormat;
    for (const SampleFormat format : {kPcm8, kPcm16, kPcm24, kFloat, kULaw, kALaw}) {
        EXPECT_TRUE(fitsSinglePrecision(format)) << sampleFormatName(format);
    }
    for (const SampleFormat format : {kPcm32, kDouble, kVorbis, kOpus, kMpeg, kOther}) {
        EXPECT_FALSE(fitsSinglePrecision(format)) << sampleFormatName(format);
    }
}

} // namespace
} // namespace varno::test
