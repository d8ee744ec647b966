// Memory of a writer: every allocation that it makes fails once.
#include "AudioFile/Writer.h"

#include "Tests/Support/TemporaryFolder.h"
#include "Tests/Support/TestAllocator.h"

#include <gtest/gtest.h>

#include <new>

namespace varno::test {
namespace {

constexpr int kFrames = 5000;

struct Output {
    std::string path;
    AudioFormat format;
    FileMetadata metadata;
    AudioWriter::Options options;
};

Output outputOf(const std::string& path, Container container) {
    Output output{path, {}, {}, {}};
    output.format.container = container;
    output.format.sample = SampleFormat::kPcm16;
    output.format.rateHz = 48'000;
    output.format.channels = 1;
    output.format.frames = 2 * kFrames;
    return output;
}

// Writes two blocks; the allocation after the first `allocations` fails. Returns whether the file is
// complete.
bool isWrittenWith(int allocations, const Output& output) {
    AudioBlock silence(1, kFrames);
    silence.setSilence(kFrames);
    const AllocationFailure failure(allocations);
    try {
        AudioWriter writer(output.path, output.format, output.metadata, output.options);
        writer.write(silence, silence.samples());
        writer.write(silence, silence.samples());
        writer.commit();
        return true;
    } catch (const std::bad_alloc&) {
        return false;
    }
}

// Returns how many allocations it takes to write the file.
int allocationsFor(const Output& output) {
    int allocations = 0;
    for (std::size_t before = liveAllocations(); !isWrittenWith(allocations, output); ++allocations) {
        EXPECT_EQ(liveAllocations(), before) << "after " << allocations << " allocations";
    }
    return allocations;
}

// Blocks for a pipe are gathered within calls of libsndfile.
TEST(WriterAllocation, ThatFailsIsThrownToTheWriterOfAPipe) {
    Output output = outputOf("/dev/null", Container::kWav);
    output.options.delivery = Delivery::kAsWritten;
    EXPECT_GT(allocationsFor(output), 10);
}

// Metadata of FLAC files is gathered within calls of libFLAC.
TEST(WriterAllocation, ThatFailsIsThrownToTheWriterOfAFlacFile) {
    const TemporaryFolder folder;
    Output output = outputOf(folder / "out.flac", Container::kFlac);
    output.metadata.flac.comments = {"TITLE=Take seven, which is a long one", "ARTIST=The Band"};
    EXPECT_GT(allocationsFor(output), 10);
    EXPECT_EQ(folder.listing(), "out.flac");
}

} // namespace
} // namespace varno::test
