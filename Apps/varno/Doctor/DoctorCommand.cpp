#include "CommandLine/CommandError.h"
#include "CommandLine/CommandLine.h"
#include "CommandLine/Console.h"
#include "CommandLine/Json.h"
#include "CommandLine/TextLayout.h"
#include "Commands.h"
#include "Doctor/InstalledParts.h"
#include "Doctor/WindowAnswer.h"
#include "Settings/ModuleLoading.h"

namespace varno {
namespace {

constexpr std::string_view kDoctorUsage[] = {"[OPTIONS]"};
constexpr std::string_view kDoctorDescription[] = {
    "Prints what this machine offers to the effect: which of its parts are installed and where, the "
    "instruction set in use, the display and its scale, the sound systems; and for what is missing the "
    "Debian package that brings it.",
    "The exit status is 0 unless the effect itself does not work. Everything else is needed by some commands "
    "only: varno-window and a display by edit, a sound system by play, the module by describe, gnuplot by "
    "plot."};
constexpr OptionEntry kDoctorOptions[] = {kJsonOption, kModuleOption, kHelpOption};
constexpr ExampleEntry kDoctorExamples[] = {
    {"varno doctor", "What is there and what is missing."},
    {"varno doctor --json", "The same for a script, or for a report of a fault."},
};

std::vector<Finding> examine(const CommandLine& line) {
    std::vector<Finding> findings = {
        effectFinding(line),
        instructionSetFinding(),
        moduleFinding(line),
        presetsFinding(line),
        lv2Finding(environmentVariable("LV2_PATH"), environmentVariable("HOME")),
        clapFinding(environmentVariable("CLAP_PATH"), environmentVariable("HOME")),
        gnuplotFinding(environmentVariable("PATH"))};
    for (auto& finding : askWindowProgram()) {
        findings.push_back(std::move(finding));
    }
    return findings;
}

std::string reportText(const std::vector<Finding>& findings) {
    TextTable parts({{"PART", Align::kLeft}, {"STATE", Align::kLeft}, {"WHAT", Align::kLeft}});
    TextTable packages({{"PART", Align::kLeft}, {"PACKAGE", Align::kLeft}});
    bool isAllThere = true;
    for (const auto& finding : findings) {
        parts.addRow({finding.part, std::string(stateWord(finding.state)), finding.detail});
        if (!finding.package.empty()) {
            packages.addRow({finding.part, finding.package});
            isAllThere = false;
        }
    }
    return std::string(kProgramName) + ' ' + VARNO_VERSION + "\n\n" + parts.text() +
           (isAllThere ? "" : "\nDebian's packages that bring what is missing:\n\n" + packages.text());
}

std::string reportJson(const std::vector<Finding>& findings) {
    const auto findingJson = [](const Finding& finding) {
        return Json::Object{{"part", finding.part},
                            {"state", std::string(stateWord(finding.state))},
                            {"detail", finding.detail},
                            {"package", finding.package.empty() ? Json() : Json(finding.package)}};
    };
    return jsonText(Json::Object{{"version", VARNO_VERSION}, {"parts", jsonArray(findings, findingJson)}});
}

int runDoctor(const CommandLine& line) {
    const auto findings = examine(line);
    printOut(line.has("--json") ? reportJson(findings) : reportText(findings));
    // The first is the effect itself.
    return findings.front().state == PartState::kGood ? kExitSuccess : kExitWorkFailed;
}

} // namespace

CommandEntry doctorCommand() {
    return {.name = "doctor",
            .summary = "Print what is installed, and what this machine lacks",
            .usage = kDoctorUsage,
            .description = kDoctorDescription,
            .options = kDoctorOptions,
            .examples = kDoctorExamples,
            .run = runDoctor};
}

} // namespace varno
