// Writes the definitions of the two conversion tables to the file named on the command line.
#include "Alg/DemoGain_Tables.h"

#include <cmath>
#include <cstdio>

namespace {

// The lowest level is the decimal number here, not its single-precision neighbour.
constexpr double kFloorLin = 0.0001;
constexpr double kDBPerDecade = 20.0; // of amplitude

float linTodB(int entry) {
    if (entry >= kDemoGain_TableIntervals) {
        return fCeilDB;
    }
    return static_cast<float>(kDBPerDecade *
                              std::log10(kFloorLin + entry * static_cast<double>(kfLinTodBStep)));
}

float dBToLin(int entry) {
    const int interval = entry < kDemoGain_TableIntervals ? entry : kDemoGain_TableIntervals;
    constexpr double kRangeDB = static_cast<double>(fCeilDB) - fFloorDB;
    const double dB = fFloorDB + interval * kRangeDB / kDemoGain_TableIntervals;
    return static_cast<float>(std::pow(10.0, dB / kDBPerDecade));
}

bool writeTable(std::FILE* file, const char* name, float (*entryOf)(int)) {
    bool good = std::fprintf(file, "\nconst float %s[kDemoGain_TableEntries] = {\n", name) > 0;
    for (int entry = 0; entry < kDemoGain_TableEntries; ++entry) {
        good = std::fprintf(file, "    %aF,\n", static_cast<double>(entryOf(entry))) > 0 && good;
    }
    return std::fprintf(file, "};\n") > 0 && good;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::fprintf(stderr, "usage: DemoGain_TablesGenerator OUTPUT\n");
        return 2;
    }
    std::FILE* file = std::fopen(argv[1], "w");
    if (file == nullptr) {
        std::perror(argv[1]);
        return 1;
    }
    bool good =
        std::fprintf(file, "// Made by DemoGain_TablesGenerator.\n#include \"Alg/DemoGain_Tables.h\"\n") > 0;
    good = writeTable(file, "kLinTodB", linTodB) && good;
    good = writeTable(file, "kdBToLin", dBToLin) && good;
    if (std::fclose(file) != 0 || !good) {
        std::perror(argv[1]);
        return 1;
    }
    return 0;
}
