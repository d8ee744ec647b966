/// Checks of things with state against models: plain things that answer as they must. Random sequences of
/// operations go to both; of a sequence with different answers, the shortest that is found is reported.
#ifndef VARNO_TESTS_SUPPORT_MODELCHECK_H
#define VARNO_TESTS_SUPPORT_MODELCHECK_H

#include "Tests/Support/Properties.h"
#include "Tests/Support/TestRun.h"

#if VARNO_HAS_PROPERTIES
#include <rapidcheck/state.h>

#include <cstdint>
#include <functional>
#include <gtest/gtest.h>
#include <memory>
#include <sstream>
#include <string>
#include <utility>

namespace varno::test {

/// An operation, and all that can be seen of it, as text.
template<class Model, class Subject>
class ModelledOperation final : public rc::state::Command<Model, Subject> {
public:
    template<class Action>
    ModelledOperation(std::string name, Action action)
        : mName(std::move(name)),
          mOnModel([action](Model& model) { return action(model); }),
          mOnSubject([action](Subject& subject) { return action(subject); }) {}

    void apply(Model& ioModel) const override { mOnModel(ioModel); }
    void run(const Model& before, Subject& ioSubject) const override {
        Model model = before;
        const std::string expected = mOnModel(model);
        const std::string seen = mOnSubject(ioSubject);
        RC_ASSERT(seen == expected);
    }
    void show(std::ostream& stream) const override { stream << mName; }

private:
    std::string mName;
    std::function<std::string(Model&)> mOnModel;
    std::function<std::string(Subject&)> mOnSubject;
};

/// How the operations of a check are drawn and carried out.
template<class Model, class Subject>
struct ModelCheck {
    using Operation = std::shared_ptr<const rc::state::Command<Model, Subject>>;

    /// The operation of a name; `action` is called with the model and with the subject and returns a text.
    template<class Action>
    static Operation operation(std::string name, Action action) {
        return std::make_shared<ModelledOperation<Model, Subject>>(std::move(name), std::move(action));
    }

    std::function<Operation()> draw; ///< An operation at random, by generators of RapidCheck.
    int cases = 100;                 ///< Sequences, each with a model and a subject of its own.
    int longest = 400;               ///< Operations of a sequence; half of them on the average.
    bool isShortened = true;         ///< Whether a sequence that fails is made as short as possible.
};

/// What a check has found.
struct ModelVerdict {
    bool holds = false;
    std::string report;          ///< The sequence that failed, and how.
    std::int64_t operations = 0; ///< Of sequences that did not fail.
};

template<class Model, class Subject>
ModelVerdict checkModel(const ModelCheck<Model, Subject>& check) {
    ModelVerdict verdict;
    const auto property = [&] {
        // At the full size: at a lower one, RapidCheck would only draw from the start of each range.
        const auto anyOperation = [&](const Model&) {
            return rc::gen::resize(rc::kNominalSize, rc::gen::exec(check.draw));
        };
        const auto sequence =
            *rc::gen::resize(check.longest, rc::state::gen::commands(Model(), anyOperation));
        Subject subject;
        rc::state::runAll(sequence, Model(), subject);
        verdict.operations += static_cast<std::int64_t>(sequence.size());
    };
    rc::detail::TestParams params = rc::detail::configuration().testParams;
    params.maxSuccess = check.cases;
    params.disableShrinking = !check.isShortened;
    const rc::detail::TestResult result =
        rc::detail::checkTestable(property, rc::detail::TestMetadata(), params);
    std::ostringstream report;
    rc::detail::printResultMessage(result, report);
    verdict.report = report.str();
    verdict.holds = result.template is<rc::detail::SuccessResult>();
    return verdict;
}

/// Fails the test unless the model holds over at least `leastOperations`, whose number it records.
template<class Model, class Subject>
void expectHolds(const ModelCheck<Model, Subject>& check, std::int64_t leastOperations) {
    const ModelVerdict verdict = checkModel(check);
    EXPECT_TRUE(verdict.holds) << verdict.report;
    EXPECT_GE(verdict.operations, leastOperations);
    testing::Test::RecordProperty("operations", std::to_string(verdict.operations));
}

/// Fails the test unless the model finds an answer that differs.
template<class Model, class Subject>
void expectRejects(ModelCheck<Model, Subject> check, const std::string& fault) {
    check.isShortened = false; // nobody reads it
    const ModelVerdict verdict = checkModel(check);
    EXPECT_FALSE(verdict.holds) << fault;
    EXPECT_NE(verdict.report.find("seen == expected"), std::string::npos) << fault << '\n' << verdict.report;
}

} // namespace varno::test
#endif

#endif
