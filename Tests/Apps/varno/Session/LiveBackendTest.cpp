#include "Session/LiveBackend.h"
#include "Tests/Apps/varno/Session/FakeBackend.h"
#include "Tests/Apps/varno/Support/ChildProcess.h"
#include "Tests/Support/TemporaryFolder.h"

#include <fcntl.h>
#include <gmock/gmock.h>
#include <unistd.h>

namespace varno::test {
namespace {

std::unique_ptr<LiveBackend> isThere(const LiveRequest& request) {
    return std::make_unique<FakeBackend>(request);
}

std::unique_ptr<LiveBackend> isMissing(const LiveRequest& request) {
    throw SoundUnavailable("nobody answers " + request.name);
}

std::unique_ptr<LiveBackend> isBroken(const LiveRequest&) {
    throw std::logic_error("broken");
}

std::string refusal(std::string_view word, std::span<const BackendEntry> entries) {
    try {
        openBackend(word, {}, entries);
    } catch (const SoundUnavailable& error) {
        return error.what();
    }
    ADD_FAILURE() << "no refusal";
    return "";
}

TEST(BackendChoice, TheFirstThatAnswersIsTaken) {
    const BackendEntry entries[] = {
        {"one", "One", isMissing}, {"two", "Two", isThere}, {"three", "Three", isBroken}};
    const auto backend = openBackend(kAnyBackend, {.name = "drive", .outputs = 1}, entries);
    EXPECT_EQ(backend->description(), "Fake client drive");
    EXPECT_EQ(dynamic_cast<FakeBackend&>(*backend).request().outputs, 1);
}

TEST(BackendChoice, ANameIsTakenByItsWord) {
    const BackendEntry entries[] = {{"one", "One", isBroken}, {"two", "Two", isThere}};
    EXPECT_NE(openBackend("two", {}, entries), nullptr);
}

TEST(BackendChoice, ARefusalNamesWhatWasTried) {
    const BackendEntry entries[] = {{"one", "One", isMissing}, {"two", "Two", isMissing}};
    EXPECT_EQ(refusal(kAnyBackend, entries),
              "no sound system can be had (One: nobody answers varno; Two: nobody answers varno)");
    EXPECT_EQ(refusal("two", entries), "no sound system can be had (Two: nobody answers varno)");
}

std::unique_ptr<LiveBackend> talks(const LiveRequest& request) {
    EXPECT_EQ(::write(STDERR_FILENO, "chatter\n", 8), 8);
    return isMissing(request);
}

TEST(BackendChoice, WhatSoundSystemsPrintIsLost) {
    const TemporaryFolder folder;
    const int status = inChildProcess([&] {
        ::dup2(::open((folder / "errors").c_str(), O_WRONLY | O_CREAT, 0600), STDERR_FILENO);
        const BackendEntry entries[] = {{"one", "One", talks}, {"two", "Two", isThere}};
        openBackend(kAnyBackend, {}, entries);
        return testing::Test::HasFailure() ? 1 : 0;
    });
    EXPECT_EQ(status, 0);
    EXPECT_EQ(readFile(folder / "errors"), "");
}

TEST(BackendChoice, JackComesFirst) {
    ASSERT_EQ(backends().size(), 2U);
    EXPECT_EQ(backends()[0].word, "jack");
    EXPECT_EQ(backends()[1].word, "rtaudio");
}

} // namespace
} // namespace varno::test
