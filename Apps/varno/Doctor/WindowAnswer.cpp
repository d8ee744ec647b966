#include "Doctor/WindowAnswer.h"

#include "CommandLine/ChildProgram.h"
#include "Settings/InstalledFiles.h"

#include <sstream>
#include <string>
#include <system_error>

namespace varno {
namespace {

constexpr const char* kPart = "window program";
constexpr const char* kPackage = "varno-editor";
// Longer than a sound system on a busy machine takes.
constexpr std::chrono::seconds kUsualPatience(10);

} // namespace

std::vector<Finding> askWindowProgram(const std::filesystem::path& program,
                                      std::chrono::milliseconds patience) {
    ChildProgram process(program.string(), {"doctor"});
    Finding itself{.part = kPart, .detail = program.string()};
    std::vector<Finding> findings;
    const auto fail = [&](const std::string& reason) {
        itself.state = PartState::kFailing;
        itself.detail += ": " + reason;
    };
    if (process.error() != 0) {
        fail("cannot be started: " + std::generic_category().message(process.error()));
        itself.package = kPackage;
    } else {
        const bool isInTime = process.readAll(patience);
        std::istringstream lines(process.out());
        for (std::string line; std::getline(lines, line);) {
            if (const auto finding = findingOf(line)) {
                findings.push_back(*finding);
            }
        }
        if (!isInTime) {
            fail("gives no answer " +
                 (findings.empty() ? std::string("at all") : "after that on " + findings.back().part));
        } else if (findings.empty()) {
            const std::string& reason = process.err();
            fail("ends without an answer" +
                 (reason.empty() ? "" : ": " + reason.substr(0, reason.find('\n'))));
            itself.package = kPackage;
        }
    }
    findings.insert(findings.begin(), itself);
    return findings;
}

std::vector<Finding> askWindowProgram() {
    const auto folder = programFolder();
    if (const auto program = installedFile(folder, "varno-window")) {
        return askWindowProgram(*program, kUsualPatience);
    }
    return {{kPart, PartState::kMissing, "varno-window is not beside the program in " + folder.string(),
             kPackage}};
}

} // namespace varno
