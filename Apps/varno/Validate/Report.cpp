#include "Validate/Report.h"

#include "CommandLine/Json.h"
#include "CommandLine/TextLayout.h"

#include <algorithm>
#include <array>
#include <cmath>

namespace varno::validate {
namespace {

constexpr std::array kFormats = {Format::kModule, Format::kLv2, Format::kClap};
constexpr std::size_t kIdColumns = 26;

std::string levelName(Level level) {
    return level == Level::kFull ? "full" : "quick";
}

std::string findingText(const Finding& finding) {
    return finding.kind == Finding::Kind::kFail ? "seen " + finding.seen + ", expected " + finding.expected
                                                : finding.seen;
}

// The finding that decides the verdict.
const Finding* decidingFinding(const CheckResult& result) {
    const auto kind = result.verdict == Verdict::kFail   ? Finding::Kind::kFail
                      : result.verdict == Verdict::kSkip ? Finding::Kind::kSkip
                                                         : Finding::Kind::kNote;
    const auto found = std::ranges::find(result.findings, kind, &Finding::kind);
    return found == result.findings.end() ? nullptr : &*found;
}

std::string kindWord(Finding::Kind kind) {
    switch (kind) {
    case Finding::Kind::kFail:
        return "fail";
    case Finding::Kind::kNote:
        return "note";
    case Finding::Kind::kSkip:
        return "skip";
    }
    return {};
}

Json findingJson(const Finding& finding) {
    Json::Object object = {{"kind", kindWord(finding.kind)}, {"seen", finding.seen}};
    if (finding.kind == Finding::Kind::kFail) {
        object.emplace_back("expected", finding.expected);
    }
    return object;
}

Json checkedJson(const CheckedCheck& checked) {
    constexpr double kPerSecond = 1000.0;
    return Json::Object{{"id", std::string(checked.check->id)},
                        {"verdict", std::string(verdictWord(checked.result.verdict))},
                        {"seconds", std::round(checked.result.seconds * kPerSecond) / kPerSecond},
                        {"findings", jsonArray(checked.result.findings, findingJson)}};
}

Json listedJson(const Check& check) {
    Json::Array formats;
    for (const Format format : kFormats) {
        if (contains(check.formats, format)) {
            formats.emplace_back(std::string(formatName(format)));
        }
    }
    return Json::Object{{"id", std::string(check.id)},
                        {"title", std::string(check.title)},
                        {"formats", formats},
                        {"level", levelName(check.level)}};
}

} // namespace

std::string judgementText(Judgement judgement) {
    return judgement == Judgement::kPassed   ? "passed"
           : judgement == Judgement::kFailed ? "failed"
                                             : "not judged";
}

Counts countVerdicts(std::span<const CheckedCheck> checked) {
    Counts counts;
    for (const CheckedCheck& each : checked) {
        const Verdict verdict = each.result.verdict;
        ++(verdict == Verdict::kFail   ? counts.failed
           : verdict == Verdict::kSkip ? counts.skipped
                                       : counts.passed);
    }
    return counts;
}

Judgement judge(const Counts& counts) {
    if (counts.failed > 0) {
        return Judgement::kFailed;
    }
    constexpr std::size_t kPercent = 100;
    const bool isEnough = counts.all() > 0 && counts.passed * kPercent >= counts.all() * kLeastRunPercent;
    return isEnough ? Judgement::kPassed : Judgement::kNotJudged;
}

std::string checkLines(const CheckedCheck& checked) {
    const Finding* const deciding = decidingFinding(checked.result);
    const std::string start = std::string(verdictWord(checked.result.verdict)) + "  " +
                              padRight(checked.check->id, kIdColumns) + "  ";
    std::string lines =
        start + (deciding == nullptr ? std::string(checked.check->title) : findingText(*deciding));
    lines += '\n';
    for (const Finding& finding : checked.result.findings) {
        if (&finding != deciding) {
            lines += "      " + kindWord(finding.kind) + ": " + findingText(finding) + '\n';
        }
    }
    return lines;
}

std::string countLine(const Counts& counts) {
    const std::string skipped = counts.skipped > 0 ? ", " + std::to_string(counts.skipped) + " skipped" : "";
    const std::string failed = counts.failed > 0 ? ", " + std::to_string(counts.failed) + " failed" : "";
    return std::to_string(counts.all()) + " checks: " + std::to_string(counts.passed) + " passed" + failed +
           skipped + ": " + judgementText(judge(counts)) + '\n';
}

std::string reportJson(const CheckSetup& setup, std::span<const CheckedCheck> checked) {
    const Counts counts = countVerdicts(checked);
    return jsonText(Json::Object{
        {"path", setup.path.string()},
        {"format", std::string(formatName(setup.format))},
        {"plugins", jsonArray(setup.selection.ids(), [](const std::string& id) { return Json(id); })},
        {"level", levelName(setup.level)},
        {"seed", setup.seed},
        {"judgement", judgementText(judge(counts))},
        {"passed", counts.passed},
        {"failed", counts.failed},
        {"skipped", counts.skipped},
        {"checks", jsonArray(checked, checkedJson)}});
}

std::string checkListText() {
    TextTable table({{"CHECK", Align::kLeft},
                     {"MODULE", Align::kLeft},
                     {"LV2", Align::kLeft},
                     {"CLAP", Align::kLeft},
                     {"LEVEL", Align::kLeft},
                     {"WHAT HOLDS", Align::kLeft}});
    for (const Check& check : allChecks()) {
        std::vector<std::string> cells = {std::string(check.id)};
        for (const Format format : kFormats) {
            cells.emplace_back(contains(check.formats, format) ? "yes" : "-");
        }
        cells.push_back(levelName(check.level));
        cells.emplace_back(check.title);
        table.addRow(cells);
    }
    return table.text();
}

std::string checkListJson() {
    return jsonText(jsonArray(allChecks(), listedJson));
}

} // namespace varno::validate
