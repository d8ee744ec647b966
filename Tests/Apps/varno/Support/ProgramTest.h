/// The program, run in a folder of its own.
#ifndef VARNO_TESTS_APPS_VARNO_SUPPORT_PROGRAMTEST_H
#define VARNO_TESTS_APPS_VARNO_SUPPORT_PROGRAMTEST_H

#include "Tests/Apps/varno/Support/SoundFiles.h"
#include "Tests/Support/Subprocess.h"
#include "Tests/Support/TemporaryFolder.h"

#include <gmock/gmock.h>

#include <ostream>
#include <string>
#include <vector>

namespace varno::test {

/// Content that is compared and not shown.
struct Bytes {
    std::string content;
    bool operator==(const Bytes&) const = default;
};
void PrintTo(const Bytes& bytes, std::ostream* out);

/// Runs the program with these arguments; no module is named in the environment unless `surroundings` does.
Outcome runVarno(const std::vector<std::string>& arguments, Surroundings surroundings = {});

/// The command line of such a run, for a Subprocess or a shell.
std::vector<std::string> varnoWords(const std::vector<std::string>& arguments);

/// Expects that the program has printed one line on standard error and nothing else.
/// @return the line without its start "varno: " and its end
std::string onlyLine(const Outcome& outcome);

class ProgramTest : public testing::Test {
protected:
    /// Runs the program in the test's folder.
    Outcome varno(const std::vector<std::string>& arguments) const;
    /// Runs it and expects that it succeeds and prints nothing on standard error. Returns its standard
    /// output.
    std::string varnoOut(const std::vector<std::string>& arguments) const;
    /// Runs it and expects that it prints one line on standard error and nothing else.
    /// @return the line without its start "varno: " and its end
    std::string refusal(int status, const std::vector<std::string>& arguments) const;

    /// The content of a file in the test's folder.
    Bytes content(const std::string& name) const { return {readFile(path(name))}; }
    std::string path(const std::string& name) const { return mFolder / name; }

    /// Makes a sound file of music-like signal: tones with decay and noise, peak about -6 dBFS.
    /// @param format libsndfile's number
    void makeMusic(const std::string& name, int format, int channels, int frames, int rateHz = 48'000) const;

    TemporaryFolder mFolder;
};

} // namespace varno::test

#endif
