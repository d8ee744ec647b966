#include "MeterFile.h"

#include "Tests/Apps/varno/Support/ErrorText.h"
#include "Tests/Support/CommaLocale.h"
#include "Tests/Support/TemporaryFolder.h"

#include <algorithm>
#include <array>
#include <gmock/gmock.h>
#include <limits>

namespace varno::test {
namespace {

class MeterFileTest : public testing::Test {
protected:
    TemporaryFolder mFolder;
    std::string mPath = mFolder / "meters.csv";
};

TEST_F(MeterFileTest, WritesAHeadingAndALinePerBlock) {
    MeterFile file(mPath, Overwrite::kRefuse, 48'000.0, {"GRL", "GRR", "InRMS", "OutRMS"});
    file.addRow(0, std::array{0.0F, 0.5F, 0.1F, 1.0F});
    file.addRow(512, std::array{0.25F, -0.0F, 1e-10F, 123456.79F});
    file.commit();
    EXPECT_EQ(readFile(mPath), "time_s,GRL,GRR,InRMS,OutRMS\n"
                               "0.000000,0,0.5,0.1,1\n"
                               "0.010667,0.25,-0,1e-10,123456.79\n");
}

TEST_F(MeterFileTest, DoesNotDependOnTheLocale) {
    const CommaLocale comma;
    MeterFile file(mPath, Overwrite::kRefuse, 2.0, {"A"});
    file.addRow(2001, std::array{1234.5F});
    file.commit();
    EXPECT_EQ(readFile(mPath), "time_s,A\n1000.500000,1234.5\n");
}

TEST_F(MeterFileTest, LongTimesFit) {
    MeterFile file(mPath, Overwrite::kRefuse, 1.0, {});
    file.addRow(std::numeric_limits<std::int64_t>::max(), {});
    file.commit();
    EXPECT_EQ(readFile(mPath), "time_s\n9223372036854775808.000000\n");
}

TEST_F(MeterFileTest, ManyRowsArriveInOrder) {
    constexpr int kRows = 20'000; // more than is handed to the system at once
    MeterFile file(mPath, Overwrite::kRefuse, 1.0, {"A"});
    for (int row = 0; row < kRows; ++row) {
        file.addRow(row, std::array{static_cast<float>(row)});
    }
    file.commit();
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

TEST_F(MeterFileTest, TellsAFullDevice) {
    MeterFile file("/dev/full", Overwrite::kRefuse, 1.0, {"A"});
    EXPECT_EQ(errorText(kExitWorkFailed, [&] { file.commit(); }),
              "/dev/full: cannot be written: No space left on device");
}

} // namespace
} // namespace varno::test
