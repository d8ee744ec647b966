#include "Session/SharedLibrary.h"
#include "Session/JackBackend.h"
#include "Session/LiveBackend.h"
#include "Session/RtAudioBackend.h"

#include <gtest/gtest.h>

namespace varno {
namespace {

template<class Action>
std::string refusalOf(Action action) {
    try {
        action();
    } catch (const SoundUnavailable& error) {
        return error.what();
    }
    return "";
}

using Cosine = double(double);

TEST(SharedLibrary, FindsFunctions) {
    const SharedLibrary library("libm.so.6");
    Cosine* cosine = nullptr;
    library.find("cos", cosine);
    ASSERT_NE(cosine, nullptr);
    EXPECT_EQ(cosine(0.0), 1.0);
    library.findOptional("no_such_function", cosine);
    EXPECT_EQ(cosine, nullptr);
}

TEST(SharedLibrary, ReportsWhatIsMissing) {
    EXPECT_EQ(refusalOf([] { SharedLibrary("libnothing.so.7"); }), "libnothing.so.7 is not installed");
    EXPECT_EQ(refusalOf([] {
                  Cosine* cosine = nullptr;
                  SharedLibrary("libm.so.6").find("no_such_function", cosine);
              }),
              "libm.so.6 has no function no_such_function");
}

// Their names have a number that differs by release.
TEST(SharedLibrary, IsThatOfEachSoundSystemWhoseHeadersAreUsed) {
    EXPECT_EQ(refusalOf(loadJack), "");
    EXPECT_EQ(refusalOf(loadRtAudio), "");
}

} // namespace
} // namespace varno
