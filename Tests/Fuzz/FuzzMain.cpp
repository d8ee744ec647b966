// One subject as a program of libFuzzer, whose own main function calls these. Besides libFuzzer's options it
// takes
//   --seeds=FOLDER   writes the seeds as files and ends
//   --describe       prints the planted faults and the files whose coverage is stated, and ends
//   --fault=NAME     has a planted fault in the product's place
#include "Tests/Fuzz/FuzzSubjects.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <fstream>
#include <optional>

namespace varno::fuzz {
namespace {

// The target of the whole run; never destroyed, since libFuzzer ends the program from anywhere.
FuzzTarget* gTarget = nullptr;

std::optional<std::string> valueOf(std::string_view argument, std::string_view option) {
    return argument.starts_with(option) ? std::optional(std::string(argument.substr(option.size())))
                                        : std::nullopt;
}

[[noreturn]] void writeSeeds(const FuzzSubject& subject, const std::string& folder) {
    for (std::size_t i = 0; i < subject.seeds.size(); ++i) {
        std::ofstream file(folder + "/seed-" + std::to_string(i), std::ios::binary);
        file << subject.seeds[i];
        if (!file.flush()) {
            std::fprintf(stderr, "cannot write to %s\n", folder.c_str());
            std::exit(1);
        }
    }
    std::exit(0);
}

[[noreturn]] void describe(const FuzzSubject& subject) {
    for (const PlantedFault& fault : subject.faults) {
        std::printf("fault %s\n", fault.name.c_str());
    }
    for (const std::string& file : subject.files) {
        std::printf("file %s\n", file.c_str());
    }
    std::exit(0);
}

std::unique_ptr<FuzzTarget> makeFaulty(const FuzzSubject& subject, const std::string& name) {
    const auto fault = std::ranges::find(subject.faults, name, &PlantedFault::name);
    if (fault == subject.faults.end()) {
        std::fprintf(stderr, "%s has no planted fault '%s'\n", subject.name.c_str(), name.c_str());
        std::exit(1);
    }
    return fault->make();
}

void start(int count, char** arguments) {
    const FuzzSubject subject = VARNO_FUZZ_SUBJECT();
    std::unique_ptr<FuzzTarget> target;
    for (int i = 1; i < count; ++i) {
        const std::string_view argument = arguments[i];
        if (const auto folder = valueOf(argument, "--seeds=")) {
            writeSeeds(subject, *folder);
        }
        if (argument == "--describe") {
            describe(subject);
        }
        if (const auto name = valueOf(argument, "--fault=")) {
            target = makeFaulty(subject, *name);
        }
    }
    gTarget = (target != nullptr ? std::move(target) : subject.make()).release();
}

} // namespace
} // namespace varno::fuzz

extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments) {
    varno::fuzz::start(*count, *arguments);
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    varno::fuzz::gTarget->run({reinterpret_cast<const char*>(data), size});
    return 0;
}
