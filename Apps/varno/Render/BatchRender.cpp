#include "Render/BatchRender.h"

#include "CommandLine/CommandError.h"
#include "CommandLine/Interruption.h"
#include "Render/GroupRender.h"
#include "Render/Workers.h"

#include <algorithm>
#include <atomic>
#include <exception>
#include <filesystem>
#include <functional>
#include <map>
#include <memory>
#include <new>
#include <system_error>
#include <utility>
#include <vector>

namespace varno {
namespace {

bool isRegularFile(const std::string& path) {
    std::error_code ignored;
    return std::filesystem::is_regular_file(path, ignored);
}

// The result of `render`, also where it fails. @throws Interrupted; std::bad_alloc
RenderResult resultOf(const RenderTask& task, const std::function<RenderReport()>& render) {
    try {
        return {render(), {}, kExitSuccess};
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

// The renders of a command, for the threads of runWorkers(): nothing here throws. A piece of work is a file,
// or several that are rendered side by side.
class Batch {
public:
    Batch(RenderSession& session, OutputFiles others, const ResultListener& onResult)
        : mSession(session),
          mTasks(session.options().tasks),
          mOthers(mTasks.size() == 1 ? others : OutputFiles()),
          mOnResult(onResult) {
        const RenderOptions& options = session.options();
        const auto threads = std::min(mTasks.size(), static_cast<std::size_t>(options.jobs));
        const bool oneByOne = options.jobs == 1 || options.dryRun || !options.channels.empty();
        std::size_t next = 0;
        for (const std::size_t files : filesTogether(mTasks.size(), oneByOne ? mTasks.size() : threads)) {
            Piece& piece = mPieces.emplace_back();
            for (std::size_t i = 0; i < files; ++i) {
                piece.todo.push_back(&mTasks[next++]);
            }
            piece.isTogether = files > 1;
        }
    }

    std::size_t pieces() const { return mPieces.size(); }

    // False where the memory did not suffice and another attempt is possible.
    bool attempt(std::size_t index) noexcept {
        Piece& piece = mPieces[index];
        if (std::exchange(piece.isTogether, false)) {
            attemptTogether(piece);
        }
        for (; !piece.todo.empty(); piece.todo.erase(piece.todo.begin())) {
            if (!attemptAlone(*piece.todo.front())) {
                return false;
            }
        }
        return true;
    }

    // Gives up the file at which the last attempt ended.
    void refuse(std::size_t index) noexcept {
        Piece& piece = mPieces[index];
        refuse(*piece.todo.front());
        piece.todo.erase(piece.todo.begin());
    }

    // Whether results could not be reported.
    bool isIncomplete() const { return mIsIncomplete; }

private:
    struct Piece {
        std::vector<const RenderTask*> todo; // what is neither reported nor given up
        bool isTogether = false;             // not attempted side by side yet
    };

    bool attemptAlone(const RenderTask& task) noexcept {
        try {
            report(task, resultOf(task, [&] { return renderAlone(task); }));
        } catch (const Interrupted&) {
            return true; // nothing more begins, since every render starts with throwIfInterrupted()
        } catch (const std::bad_alloc&) {
            if (isRegularFile(task.input)) { // what comes from a pipe can be read once only
                return false;
            }
            refuse(task);
        }
        return true;
    }

    RenderReport renderAlone(const RenderTask& task) {
        if (!isSkipped(task)) {
            return renderFile(mSession, task, mOthers);
        }
        RenderReport report;
        report.task = task;
        report.isSkipped = true;
        return report;
    }

    bool isSkipped(const RenderTask& task) const {
        if (!mSession.options().skipExisting || !isMade(task.output)) {
            return false;
        }
        const RenderRecord* const record = mSession.record();
        return record == nullptr || record->isUpToDate(task);
    }

    // What is left to do afterwards is rendered alone: pipes, which would keep the others waiting, and what
    // was refused memory.
    void attemptTogether(Piece& piece) noexcept {
        try {
            throwIfInterrupted();
            std::vector<std::unique_ptr<FileRender>> files;
            std::map<const FileRender*, const RenderTask*> tasks;
            for (const RenderTask* const task : std::vector(piece.todo)) {
                if (isSkipped(*task) || !isRegularFile(task->input) || isPipeOutput(task->output)) {
                    continue;
                }
                try {
                    files.push_back(std::make_unique<FileRender>(mSession, *task));
                    tasks[files.back().get()] = task;
                } catch (...) {
                    endFailed(piece, *task);
                }
            }
            std::vector<FileRender*> renders;
            for (const auto& file : files) {
                renders.push_back(file.get());
            }
            renderTogether(renders,
                           {.ended =
                                [&](FileRender& file) {
                                    const RenderTask& task = *tasks.at(&file);
                                    const RenderReport made = file.finish({});
                                    std::erase(piece.todo, &task);
                                    report(task, {made, {}, kExitSuccess});
                                },
                            .failed = [&](FileRender& file) { endFailed(piece, *tasks.at(&file)); }});
        } catch (const std::exception&) {
            return; // an interruption, which ends every further render, or no memory
        }
    }

    // Reports the exception that is being handled, unless another attempt is possible.
    void endFailed(Piece& piece, const RenderTask& task) noexcept {
        try {
            const RenderResult result = resultOf(task, []() -> RenderReport { throw; });
            std::erase(piece.todo, &task);
            report(task, result);
        } catch (const std::exception&) {
            return; // an interruption, which ends every further render, or no memory
        }
    }

    void refuse(const RenderTask& task) noexcept {
        try {
            report(task, {{}, task.input + ": cannot be rendered: not enough memory", kExitWorkFailed});
        } catch (const std::bad_alloc&) {
            mIsIncomplete = true;
        }
    }

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
    std::vector<Piece> mPieces;
    std::atomic<bool> mIsIncomplete{false};
};

} // namespace

bool isMade(const std::string& path) {
    return path != "-" && isRegularFile(path);
}

void renderAll(RenderSession& session, OutputFiles others, const ResultListener& onResult) {
    Batch batch(session, others, onResult);
    runWorkers(batch.pieces(), static_cast<std::size_t>(session.options().jobs),
               {[&](std::size_t index) { return batch.attempt(index); },
                [&](std::size_t index) { batch.refuse(index); }});
    session.progress().finish();
    throwIfInterrupted();
    if (batch.isIncomplete()) {
        throw WorkError("not enough memory to report every render");
    }
}

} // namespace varno
