#include "Render/CsvFiles.h"
#include "Tests/Apps/varno/Support/ErrorText.h"
#include "Tests/Support/CommaLocale.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <array>
#include <limits>

namespace varno::test {
namespace {

using testing::HasSubstr;

constexpr double kFileRateHz = 48'000.0;

class AutomationFileTest : public testing::Test {
protected:
    std::vector<AutomationPoint> read(const std::string& text, double rateHz = kFileRateHz) {
        writeFile(mPath, text);
        return readAutomationFile(mPath, rateHz);
    }

    std::string error(const std::string& text) {
        return errorText(kExitWorkFailed, [&] { read(text); });
    }

    TemporaryFolder mFolder;
    std::string mPath = mFolder / "moves.csv";
};

TEST_F(AutomationFileTest, ReadsTimeParameterAndValue) {
    const auto points = read("time_s,parameter,value\n0,Gain,0.5\n1.5,Ratio,4:1\n");
    ASSERT_EQ(points.size(), 2U);
    EXPECT_EQ(points[0].frame, 0);
    EXPECT_EQ(points[0].parameter, "Gain");
    EXPECT_EQ(points[0].value, "0.5");
    EXPECT_EQ(points[0].line, 2);
    EXPECT_EQ(points[1].frame, 72'000);
    EXPECT_EQ(points[1].value, "4:1");
}

TEST_F(AutomationFileTest, SkipsBlankLinesRemarksAndBlanksAroundFields) {
    const auto points =
        read("\n# moves of the mix\n  \t\n time_s , parameter , value \r\n 1 , Gain , -3 dB \r\n #\n");
    ASSERT_EQ(points.size(), 1U);
    EXPECT_EQ(points[0].parameter, "Gain");
    EXPECT_EQ(points[0].value, "-3 dB");
    EXPECT_EQ(points[0].line, 5);
}

TEST_F(AutomationFileTest, TakesUpTo64MiB) {
    std::string text = "1,Gain,0\n#";
    text.resize(std::size_t{64} * 1024 * 1024, 'x');
    EXPECT_EQ(read(text).size(), 1U);
    EXPECT_EQ(error(text + 'x'), mPath + ": has more than 64 MiB; expected a shorter automation file");
}

TEST_F(AutomationFileTest, NeedsNeitherHeadingNorLastLineEnd) {
    EXPECT_EQ(read("1,Gain,0").size(), 1U);
}

TEST_F(AutomationFileTest, TakesAByteOrderMark) {
    EXPECT_EQ(read("\xEF\xBB\xBFtime_s,parameter,value\n1,Gain,0").size(), 1U);
}

TEST_F(AutomationFileTest, AnEmptyFileHasNoPoints) {
    EXPECT_TRUE(read("").empty());
    EXPECT_TRUE(read("time_s,parameter,value\n").empty());
}

TEST_F(AutomationFileTest, SortsByTimeAndKeepsTheOrderOfEqualTimes) {
    const auto points = read("2,A,1\n1,B,2\n2,C,3\n1,D,4\n0,E,5\n");
    std::string order;
    for (const AutomationPoint& point : points) {
        order += point.parameter;
    }
    EXPECT_EQ(order, "EBDAC");
}

TEST_F(AutomationFileTest, TimesThatFallOnOneFrameKeepTheOrderOfLines) {
    const auto points = read("1.000001,Late,1\n1.000000,Early,2\n");
    EXPECT_EQ(points[0].frame, points[1].frame);
    EXPECT_EQ(points[0].parameter, "Late");
}

TEST_F(AutomationFileTest, RoundsToTheNearestFrame) {
    EXPECT_EQ(read("0.49,A,1", 1.0)[0].frame, 0);
    EXPECT_EQ(read("0.5,A,1", 1.0)[0].frame, 1);
    EXPECT_EQ(read("1.5,A,1", 1.0)[0].frame, 2);
    EXPECT_EQ(read("0.1,A,1", 44'100.0)[0].frame, 4410);
    EXPECT_EQ(read("1e3,A,1", 96'000.0)[0].frame, 96'000'000);
}

TEST_F(AutomationFileTest, DoesNotDependOnTheLocale) {
    const CommaLocale comma;
    EXPECT_EQ(read("1000.5,A,1", 2.0)[0].frame, 2001);
}

TEST_F(AutomationFileTest, NamesTheLineThatHasNotThreeFields) {
    EXPECT_EQ(error("time_s,parameter,value\n0,Gain,1\n1,Gain\n"),
              mPath + ", line 3: found \"1,Gain\"; expected three fields time_s,parameter,value");
    EXPECT_THAT(error("0,Gain,1,2"), HasSubstr("line 1: found \"0,Gain,1,2\""));
    EXPECT_THAT(error("nonsense"), HasSubstr("line 1: found \"nonsense\""));
}

TEST_F(AutomationFileTest, NamesTheTimeThatIsNone) {
    EXPECT_EQ(error("0,Gain,1\n\n-1,Gain,1"),
              mPath + ", line 3: time \"-1\" found; expected seconds from the start, 0 or more");
    for (const char* time : {"", "x", "1s", "nan", "inf", "-0.001", "1e30", "0x10", "1e999", "1 2"}) {
        EXPECT_THAT(error(std::string(time) + ",Gain,1"),
                    HasSubstr("time \"" + std::string(time) + "\" found"));
    }
}

TEST_F(AutomationFileTest, AHeadingIsOneOnlyAtTheStart) {
    EXPECT_THAT(error("0,Gain,1\ntime_s,parameter,value\n"), HasSubstr("line 2: time \"time_s\" found"));
    EXPECT_THAT(error("time_s,parameter,value\ntime_s,parameter,value\n"), HasSubstr("line 2: time"));
}

TEST_F(AutomationFileTest, NamesTheFieldThatIsMissing) {
    EXPECT_THAT(error("0,,1"), HasSubstr("line 1: no parameter found"));
    EXPECT_THAT(error("0,Gain, "), HasSubstr("line 1: no value found for Gain"));
}

TEST_F(AutomationFileTest, NamesTheFileThatCannotBeRead) {
    const std::string missing = mFolder / "missing.csv";
    EXPECT_EQ(errorText(kExitWorkFailed, [&] { readAutomationFile(missing, kFileRateHz); }),
              missing + ": cannot be read: No such file or directory");
    const std::string folder = mFolder.path().string();
    EXPECT_EQ(errorText(kExitWorkFailed, [&] { readAutomationFile(folder, kFileRateHz); }),
              folder + ": cannot be read: Is a directory");
}

class MeterFileTest : public testing::Test {
protected:
    TemporaryFolder mFolder;
    std::string mPath = mFolder / "meters.csv";
};

TEST_F(MeterFileTest, WritesAHeadingAndALinePerBlock) {
    MeterFile file(mPath, Overwrite::kRefuse, 48'000.0, {"GRL", "GRR", "InRMS", "OutRMS"});
    file.addRow(0, std::array{0.0F, 0.5F, 0.1F, 1.0F});
    file.addRow(512, std::array{0.25F, -0.0F, 1e-10F, 123456.79F});
    file.finish().commit();
    EXPECT_EQ(readFile(mPath), "time_s,GRL,GRR,InRMS,OutRMS\n"
                               "0.000000,0,0.5,0.1,1\n"
                               "0.010667,0.25,-0,1e-10,123456.79\n");
}

TEST_F(MeterFileTest, DoesNotDependOnTheLocale) {
    const CommaLocale comma;
    MeterFile file(mPath, Overwrite::kRefuse, 2.0, {"A"});
    file.addRow(2001, std::array{1234.5F});
    file.finish().commit();
    EXPECT_EQ(readFile(mPath), "time_s,A\n1000.500000,1234.5\n");
}

TEST_F(MeterFileTest, LongTimesFit) {
    MeterFile file(mPath, Overwrite::kRefuse, 1.0, {});
    file.addRow(std::numeric_limits<std::int64_t>::max(), {});
    file.finish().commit();
    EXPECT_EQ(readFile(mPath), "time_s\n9223372036854775808.000000\n");
}

TEST_F(MeterFileTest, ManyRowsArriveInOrder) {
    constexpr int kRows = 20'000; // more than one write to the system holds
    MeterFile file(mPath, Overwrite::kRefuse, 1.0, {"A"});
    for (int row = 0; row < kRows; ++row) {
        file.addRow(row, std::array{static_cast<float>(row)});
    }
    file.finish().commit();
    const std::string text = readFile(mPath);
    EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), kRows + 1);
    EXPECT_TRUE(text.ends_with("\n19998.000000,19998\n19999.000000,19999\n"));
}

TEST_F(MeterFileTest, LeavesNothingWithoutCommit) {
    {
        MeterFile file(mPath, Overwrite::kRefuse, 1.0, {"A"});
        file.addRow(0, std::array{0.0F});
    }
    EXPECT_EQ(mFolder.listing(), "");
}

TEST_F(MeterFileTest, RefusesAnExistingFile) {
    writeFile(mPath, "old");
    errorText(kExitWorkFailed, [&] { MeterFile(mPath, Overwrite::kRefuse, 1.0, {}); });
    EXPECT_EQ(readFile(mPath), "old");
}

TEST_F(MeterFileTest, ReportsAFullDevice) {
    MeterFile file("/dev/full", Overwrite::kRefuse, 1.0, {"A"});
    EXPECT_EQ(errorText(kExitWorkFailed, [&] { file.finish().commit(); }),
              "/dev/full: cannot be written: No space left on device");
}

} // namespace
} // namespace varno::test
