#include "Play/StatisticsReport.h"

#include "CommandLine/TextLayout.h"
#include "Surround/Settings/NumberText.h"

#include <algorithm>
#include <bit>
#include <iterator>
#include <sched.h>
#include <vector>

namespace varno {
namespace {

constexpr double kNsPerUs = 1000.0;
constexpr double kMedian = 0.5;
constexpr double kNearlyAll = 0.999;
constexpr int kTimeDecimals = 1;
constexpr std::size_t kBarColumns = 40;
constexpr std::size_t kTermColumns = 12;
constexpr std::size_t kLongBlocksListed = 10;

double inUs(std::int64_t ns) {
    return static_cast<double>(ns) / kNsPerUs;
}

std::string textUs(std::int64_t ns) {
    return decimalText(inUs(ns), kTimeDecimals);
}

std::int64_t blockNs(const LiveStatistics& statistics) {
    return blockLengthNs(statistics.frames, statistics.rateHz);
}

std::string policyName(int policy) {
    struct Row {
        int policy;
        const char* name;
    };
    constexpr Row kPolicies[] = {{SCHED_OTHER, "SCHED_OTHER"},
                                 {SCHED_FIFO, "SCHED_FIFO"},
                                 {SCHED_RR, "SCHED_RR"},
                                 {SCHED_BATCH, "SCHED_BATCH"},
                                 {SCHED_IDLE, "SCHED_IDLE"}};
    const auto* const found = std::ranges::find(kPolicies, policy & ~SCHED_RESET_ON_FORK, &Row::policy);
    return found == std::end(kPolicies) ? std::to_string(policy) : found->name;
}

std::string scheduleText(const std::optional<ThreadSchedule>& schedule) {
    if (!schedule) {
        return "not known: nothing was processed";
    }
    return policyName(schedule->policy) + (schedule->priority > 0
                                               ? ", priority " + std::to_string(schedule->priority)
                                               : ", not a real-time thread");
}

const char* causeName(LateCause cause) {
    return cause == LateCause::kOurs ? "ours" : "interrupted";
}

std::string line(std::string_view term, const std::string& text) {
    return padRight(term, kTermColumns) + "  " + text + '\n';
}

std::string lateText(const BlockStatistics& blocks) {
    return std::to_string(blocks.late(LateCause::kOurs)) + " ours, " +
           std::to_string(blocks.late(LateCause::kInterrupted)) + " interrupted, " +
           std::to_string(blocks.late(LateCause::kWokenLate)) + " woken late; " +
           std::to_string(blocks.lostBlocks()) + " lost";
}

std::string timesText(const BlockStatistics& blocks) {
    TextTable table({{"microseconds", Align::kLeft},
                     {"p50", Align::kRight},
                     {"p99.9", Align::kRight},
                     {"worst", Align::kRight}});
    const auto add = [&](const char* name, const TimeHistogram& times) {
        if (times.count() > 0) {
            table.addRow({name, textUs(times.percentileNs(kMedian)), textUs(times.percentileNs(kNearlyAll)),
                          textUs(times.worstNs())});
        }
    };
    add("processing", blocks.processing());
    add("waking", blocks.waking());
    return table.text();
}

// The rows up to each power of two nanoseconds, from the first to the last in which something was counted.
std::vector<TimeHistogram::Row> coarseRows(const TimeHistogram& times) {
    std::vector<TimeHistogram::Row> coarse;
    for (const auto& row : times.rows()) {
        const auto end = static_cast<std::int64_t>(std::bit_ceil(static_cast<std::uint64_t>(row.mostNs) + 1));
        while (!coarse.empty() && coarse.back().mostNs < end) {
            coarse.push_back({2 * coarse.back().mostNs, 0});
        }
        if (coarse.empty()) {
            coarse.push_back({end, 0});
        }
        coarse.back().count += row.count;
    }
    return coarse;
}

std::string histogramText(const TimeHistogram& times) {
    const auto rows = coarseRows(times);
    TextTable table({{"up to", Align::kRight}, {"blocks", Align::kRight}, {"", Align::kLeft}});
    const std::int64_t most = std::ranges::max(rows, {}, &TimeHistogram::Row::count).count;
    for (const auto& row : rows) {
        const auto length =
            (static_cast<std::size_t>(row.count) * kBarColumns + static_cast<std::size_t>(most) - 1) /
            static_cast<std::size_t>(most);
        table.addRow({textUs(row.mostNs), std::to_string(row.count), std::string(length, '#')});
    }
    return table.text();
}

// The longest blocks first.
std::string longBlocksText(std::vector<LongBlock> blocks) {
    if (blocks.empty()) {
        return "";
    }
    std::ranges::sort(blocks, std::ranges::greater(),
                      [](const LongBlock& block) { return block.cost.elapsedNs; });
    blocks.resize(std::min(blocks.size(), kLongBlocksListed));
    TextTable table({{"took", Align::kRight},
                     {"computed", Align::kRight},
                     {"waits", Align::kRight},
                     {"page faults", Align::kRight},
                     {"cause", Align::kLeft}});
    for (const auto& [cause, cost] : blocks) {
        table.addRow({textUs(cost.elapsedNs), textUs(cost.workedNs), std::to_string(cost.waits),
                      std::to_string(cost.pageFaults), causeName(cause)});
    }
    return "\nthe longest of those that took longer than they last, in microseconds:\n" + table.text();
}

Json longBlockJson(const LongBlock& block) {
    return Json::Object{{"cause", causeName(block.cause)},
                        {"began_ns", block.cost.beganNs},
                        {"took_us", inUs(block.cost.elapsedNs)},
                        {"computed_us", inUs(block.cost.workedNs)},
                        {"waits", block.cost.waits},
                        {"page_faults", block.cost.pageFaults},
                        {"processor", block.cost.processor}};
}

Json timesJson(const TimeHistogram& times) {
    if (times.count() == 0) {
        return {};
    }
    const auto rowJson = [](const TimeHistogram::Row& row) {
        return Json::Object{{"up_to", inUs(row.mostNs)}, {"blocks", row.count}};
    };
    return Json::Object{{"p50", inUs(times.percentileNs(kMedian))},
                        {"p99_9", inUs(times.percentileNs(kNearlyAll))},
                        {"worst", inUs(times.worstNs())},
                        {"histogram", jsonArray(times.rows(), rowJson)}};
}

Json scheduleJson(const std::optional<ThreadSchedule>& schedule) {
    if (!schedule) {
        return {};
    }
    return Json::Object{{"policy", policyName(schedule->policy)}, {"priority", schedule->priority}};
}

} // namespace

std::string statisticsText(const LiveStatistics& statistics) {
    const BlockStatistics& blocks = statistics.blocks;
    std::string head =
        line("blocks", std::to_string(blocks.processing().count()) + ", in the end of " +
                           std::to_string(statistics.frames) + " frames at " +
                           textFromNumber(statistics.rateHz) + " Hz: " + textUs(blockNs(statistics)) +
                           " microseconds") +
        line("late blocks", lateText(blocks)) +
        line("overruns", std::to_string(statistics.overruns) + ", as the sound system counts") +
        line("scheduling", scheduleText(blocks.schedule()));
    if (blocks.processing().count() == 0) {
        return head;
    }
    return head + '\n' + timesText(blocks) + "\nprocessing, in microseconds:\n" +
           histogramText(blocks.processing()) + longBlocksText(blocks.longBlocks());
}

Json statisticsJson(const LiveStatistics& statistics) {
    const BlockStatistics& blocks = statistics.blocks;
    return Json::Object{{"blocks", blocks.processing().count()},
                        {"frames", statistics.frames},
                        {"rate_hz", statistics.rateHz},
                        {"block_us", inUs(blockNs(statistics))},
                        {"late", Json::Object{{"ours", blocks.late(LateCause::kOurs)},
                                              {"interrupted", blocks.late(LateCause::kInterrupted)},
                                              {"woken_late", blocks.late(LateCause::kWokenLate)}}},
                        {"long_blocks", jsonArray(blocks.longBlocks(), longBlockJson)},
                        {"lost_blocks", blocks.lostBlocks()},
                        {"overruns", statistics.overruns},
                        {"schedule", scheduleJson(blocks.schedule())},
                        {"processing_us", timesJson(blocks.processing())},
                        {"waking_us", timesJson(blocks.waking())}};
}

} // namespace varno
