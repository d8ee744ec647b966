#include "Validate/Check.h"

#include <utility>

namespace varno::validate {

Context::Context(CheckSetup setup, Sink sink, StepSink stepSink)
    : mSetup(std::move(setup)),
      mSink(std::move(sink)),
      mStepSink(std::move(stepSink)) {
}

Context::~Context() {
    if (mFailures > kMostFailures) {
        mSink({Finding::Kind::kNote, std::to_string(mFailures - kMostFailures) + " more failures", {}});
    }
}

void Context::fail(const std::string& seen, const std::string& expected) {
    ++mFailures;
    if (mFailures <= kMostFailures) {
        mSink({Finding::Kind::kFail, seen, expected});
    }
}

bool Context::expect(bool condition, const std::string& seen, const std::string& expected) {
    if (!condition) {
        fail(seen, expected);
    }
    return condition;
}

void Context::note(const std::string& text) {
    mSink({Finding::Kind::kNote, text, {}});
}

void Context::skip(const std::string& reason) const {
    throw SkippedCheck{reason};
}

std::span<const Check> allChecks() {
    static const auto all = [] {
        std::vector<Check> checks;
        for (const auto group :
             {binaryChecks(), descriptionChecks(), lifeChecks(), parameterChecks(), stateChecks(),
              audioChecks(), stressChecks(), automationChecks(), bypassChecks(), editorChecks()}) {
            checks.insert(checks.end(), group.begin(), group.end());
        }
        return checks;
    }();
    return all;
}

bool applies(const Check& check, Format format, Level level) {
    return contains(check.formats, format) && (check.level == Level::kQuick || level == Level::kFull);
}

} // namespace varno::validate
