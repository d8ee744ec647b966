#include "Render/BatchRender.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/Interruption.h"
#include "Render/Workers.h"

#include <atomic>
#include <exception>
#include <filesystem>
#include <new>
#include <system_error>
#include <vector>

namespace varno {
namespace {

bool isRegularFile(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored);
}

// Also of a failure. @throws Interrupted; std::bad_alloc
RenderResult renderOne(RenderSession& session, const RenderTask& task, OutputFiles others) {
    try {
        if (session.options().skipExisting && isMade(task.output)) {
            RenderReport report;
            report.task = task;
            report.isSkipped = true;
            return {report, {}, kExitSuccess};
        }
        return {renderFile(session, task, others), {}, kExitSuccess};
    } catch (const Interrupted&) {
        throw;
    } catch (const CommandError& error) {
        return {{}, error.what(), exitStatusOf(error)};
    } catch (const FileError& error) {
        return {{}, error.what(), exitStatusOf(error)};
    } catch (const std::bad_alloc&) {
        throw;
    } catch (const std::exception& error) {
        return {{}, task.input + ": " + error.what(), kExitWorkFailed};
    }
}

// The renders of a command, for the threads of runWorkers(): nothing here throws.
class Batch {
public:
    Batch(RenderSession& session, OutputFiles others, const ResultListener& onResult)
        : mSession(session),
          mTasks(session.options().tasks),
          mOthers(mTasks.size() == 1 ? others : OutputFiles()),
          mOnResult(onResult) {}

    // False where the memory did not suffice and another attempt is possible.
    bool attempt(std::size_t index) noexcept {
        const RenderTask& task = mTasks[index];
        try {
            const RenderResult result = renderOne(mSession, task, mOthers);
            report(task, result);
        } catch (const Interrupted&) {
            return true; // nothing more begins, since every render starts with throwIfInterrupted()
        } catch (const std::bad_alloc&) {
            if (isRegularFile(task.input)) { // what comes from a pipe can be read once only
                return false;
            }
            refuse(index);
        }
        return true;
    }

    void refuse(std::size_t index) noexcept {
        try {
            const RenderTask& task = mTasks[index];
            report(task, {{}, task.input + ": cannot be rendered: not enough memory", kExitWorkFailed});
        } catch (const std::bad_alloc&) {
            mIsIncomplete = true;
        }
    }

    // Whether results could not be reported.
    bool isIncomplete() const { return mIsIncomplete; }

private:
    void report(const RenderTask& task, const RenderResult& result) noexcept {
        try {
            mSession.progress().printAbove([&] { mOnResult(task, result); });
        } catch (const std::exception&) {
            mIsIncomplete = true;
        }
    }

    RenderSession& mSession;
    const std::vector<RenderTask>& mTasks;
    OutputFiles mOthers;
    const ResultListener& mOnResult;
    std::atomic<bool> mIsIncomplete{false};
};

} // namespace

bool isMade(const std::string& path) {
    return path != "-" && isRegularFile(path);
}

void renderAll(RenderSession& session, OutputFiles others, const ResultListener& onResult) {
    Batch batch(session, others, onResult);
    runWorkers(session.options().tasks.size(), static_cast<std::size_t>(session.options().jobs),
               {[&](std::size_t index) { return batch.attempt(index); },
                [&](std::size_t index) { batch.refuse(index); }});
    session.progress().finish();
    throwIfInterrupted();
    if (batch.isIncomplete()) {
        throw WorkError("not enough memory to report every render");
    }
}

} // namespace varno
