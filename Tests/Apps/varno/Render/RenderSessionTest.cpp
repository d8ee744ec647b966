#include "Render/RenderSession.h"
#include "Tests/Apps/varno/Support/ErrorText.h"
#include "Tests/Support/TemporaryFolder.h"

#include <filesystem>

namespace varno::test {
namespace {

namespace fs = std::filesystem;

TEST(InputFiles, AreKnownUnderEveryName) {
    const TemporaryFolder folder;
    writeFile(folder / "a.wav", "a");
    writeFile(folder / "b.wav", "b");
    fs::create_symlink("b.wav", folder / "link.wav");
    fs::create_hard_link(folder / "b.wav", folder / "hard.wav");
    const InputFiles inputs({{folder / "a.wav", ""}, {folder / "b.wav", ""}});
    for (const std::string name : {"b.wav", "link.wav", "hard.wav"}) {
        EXPECT_EQ(errorText(1, [&] { inputs.refuseAsOutput(folder / name); }),
                  folder / name + ": is the input file " + (folder / "b.wav") + "; expected another file");
    }
}

TEST(InputFiles, AcceptOtherOutputs) {
    const TemporaryFolder folder;
    writeFile(folder / "a.wav", "a");
    writeFile(folder / "b.wav", "b");
    const InputFiles inputs({{folder / "a.wav", ""}, {folder / "missing.wav", ""}, {"-", ""}});
    EXPECT_NO_THROW(inputs.refuseAsOutput(folder / "b.wav"));
    EXPECT_NO_THROW(inputs.refuseAsOutput(folder / "new.wav"));
    EXPECT_NO_THROW(inputs.refuseAsOutput("-"));
}

TEST(InputFiles, DevicesMayBeBoth) {
    const InputFiles inputs(std::vector<RenderTask>{{"/dev/null", ""}});
    EXPECT_NO_THROW(inputs.refuseAsOutput("/dev/null"));
}

} // namespace
} // namespace varno::test
