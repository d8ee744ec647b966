#include "RenderJobs.h"

#include "CommandError.h"
#include "FileRender.h"

#include <atomic>
#include <exception>
#include <thread>

namespace varno {
namespace {

RenderResult renderOne(RenderSession& session, const RenderTask& task) {
    try {
        return {renderFile(session, task), {}, kExitSuccess};
    } catch (const CommandError& error) {
        return {{}, error.what(), exitStatusOf(error)};
    } catch (const AudioFileError& error) {
        return {{}, error.what(), exitStatusOf(error)};
    } catch (const std::exception& error) {
        return {{}, task.input + ": " + error.what(), kExitWorkFailed};
    }
}

} // namespace

std::vector<RenderResult> renderAll(RenderSession& session) {
    const auto& tasks = session.options().tasks;
    std::vector<RenderResult> results(tasks.size());
    std::atomic<std::size_t> next{0};
    const auto work = [&] {
        for (std::size_t i = next++; i < tasks.size(); i = next++) {
            results[i] = renderOne(session, tasks[i]);
        }
    };
    // The calling thread is one of the workers.
    std::vector<std::jthread> others;
    const auto workers = std::min(static_cast<std::size_t>(session.options().jobs), tasks.size());
    while (others.size() + 1 < workers) {
        others.emplace_back(work);
    }
    work();
    others.clear(); // waits for them
    return results;
}

} // namespace varno
