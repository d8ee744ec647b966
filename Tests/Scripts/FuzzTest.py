"""Runs of libFuzzer over small subjects: a sound one, one that breaks, one that misses its planted fault; what is written."""
import re
import subprocess
import unittest

from fixture import FixtureProject

FUZZ_CMAKE = """
function(varno_fuzz name)
  add_executable(fuzz_${name} EXCLUDE_FROM_ALL ${name}.cpp)
  target_link_libraries(fuzz_${name} PRIVATE varno_settings)
  target_link_options(fuzz_${name} PRIVATE -fsanitize=fuzzer)
endfunction()
varno_fuzz(sound)
varno_fuzz(broken)
varno_fuzz(blind)
"""
# Of a text that begins with "ab" it takes off the front as many bytes as the third says. FAULTY has it take more than
# there are; BLIND has the planted fault make no difference.
SUBJECT = """
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

static bool gIsPlanted = false;

static std::size_t taken(const std::uint8_t* data, std::size_t size, bool isFaulty) {
    if (size < 3 || data[0] != 'a' || data[1] != 'b') {
        return 0;
    }
    const std::size_t wanted = data[2];
    return isFaulty || wanted < size ? wanted : size;
}

extern "C" int LLVMFuzzerInitialize(int* count, char*** arguments) {
    for (int i = 1; i < *count; ++i) {
        const std::string argument = (*arguments)[i];
        if (argument.rfind("--seeds=", 0) == 0) {
            std::FILE* file = std::fopen((argument.substr(8) + "/seed").c_str(), "w");
            std::fputs("ab", file);
            std::exit(std::fclose(file));
        }
        if (argument == "--describe") {
            std::puts("fault takes too much\\nfile Tests/Fuzz/NAME.cpp");
            std::exit(0);
        }
        gIsPlanted = gIsPlanted || argument == "--fault=takes too much";
    }
    return 0;
}

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (taken(data, size, IS_FAULTY) > size) {
        std::abort();
    }
    return 0;
}
"""
DOCUMENT = "# Verification\n\n<!-- fuzz: written by ./run fuzz --record -->\n\nold\n\n<!-- /fuzz -->\n\n## After\n"


class FuzzTest(FixtureProject):
    def setUp(self):
        super().setUp()
        self.write("Tests/CMakeLists.txt", "add_subdirectory(Fuzz)\n")
        self.write("Tests/Fuzz/CMakeLists.txt", FUZZ_CMAKE)
        for name, is_faulty in (("sound", "gIsPlanted"), ("broken", "true"), ("blind", "false")):
            self.write(f"Tests/Fuzz/{name}.cpp", SUBJECT.replace("IS_FAULTY", is_faulty).replace("NAME", name))
        self.write("Tests/leaks.txt", "# None.\n")
        self.write("docs/verification.md", DOCUMENT)

    def fuzz(self, *arguments):
        return self.run_script("--no-install", "fuzz", *arguments)

    def test_a_sound_subject(self):
        done = self.fuzz("sound", "--executions", "100000", "--record")
        self.assertEqual(done.returncode, 0, done.stderr + done.stdout)
        found = re.fullmatch(r"sound: (\d+) executions, (\d+) of (\d+) edges, (\d+) features, (\d+) MB; "
                             r"lines: sound.cpp (\d+) %; planted faults: 1 of 1 found\n", done.stdout)
        self.assertIsNotNone(found, done.stdout)
        executions, edges, all_edges, features, memory, lines = map(int, found.groups())
        self.assertGreaterEqual(executions, 100000)
        self.assertGreater(edges, 0)
        self.assertGreater(all_edges, edges)
        self.assertGreater(features, 0)
        self.assertGreater(memory, 0)
        self.assertTrue(0 < lines < 100, lines)
        self.assertTrue(list((self.root / "build/fuzz/found/sound/corpus").iterdir()))
        text = (self.root / "docs/verification.md").read_text()
        self.assertIn(f"| sound | {executions:,} | {edges} | {features} | {memory} MB | 1 of 1 | 0 | `sound.cpp` {lines} % | ",
                      text)
        self.assertNotIn("old", text)
        self.assertTrue(text.startswith("# Verification\n") and text.endswith("## After\n"), text)

    def test_an_input_that_breaks_something_is_printed_with_the_command_that_repeats_it(self):
        done = self.fuzz("broken", "--seconds", "30")
        self.assertEqual(done.returncode, 1, done.stdout)
        self.assertRegex(done.stdout, r"broken: ERROR: .*\n  input: 61 62( [0-9a-f]{2})+\n")
        command = re.search(r"^  repeat: (.*)$", done.stdout, re.MULTILINE)[1]
        again = subprocess.run(command, shell=True, cwd=self.root, capture_output=True, text=True, check=False)
        self.assertNotEqual(again.returncode, 0)
        self.assertIn("deadly signal", again.stderr)

    def test_a_planted_fault_that_is_not_found_fails(self):
        script = self.root / "Scripts/fuzz"
        script.write_text(script.read_text().replace("MOST_SECONDS_TO_FAULT = 60", "MOST_SECONDS_TO_FAULT = 2"))
        done = self.fuzz("blind", "--executions", "100")
        self.assertEqual(done.returncode, 1, done.stdout)
        self.assertIn("planted faults: 0 of 1 found", done.stdout)
        self.assertIn("blind does not find the planted fault 'takes too much'", done.stdout)

    def test_wrong_arguments_are_refused_before_anything_is_built(self):
        for arguments, reason in ((("chunk",), "no subject 'chunk'; expected one of sound, broken, blind"),
                                  (("--executions", "0"), "expected 1 or more"),
                                  (("--seconds", "1", "--executions", "1"), "not allowed with")):
            done = self.fuzz(*arguments)
            self.assertNotEqual(done.returncode, 0)
            self.assertIn(reason, done.stderr)
        self.write("docs/verification.md", "# Verification\n")
        done = self.fuzz("--record")
        self.assertNotEqual(done.returncode, 0)
        self.assertIn("the lines <!-- fuzz: written by ./run fuzz --record --> and <!-- /fuzz --> are missing", done.stderr)
        self.assertFalse((self.root / "build/fuzz").exists())


if __name__ == "__main__":
    unittest.main()
