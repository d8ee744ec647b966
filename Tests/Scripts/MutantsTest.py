"""Changes that tests notice and others, in a small project; lists of equivalent ones; the journal; interrupted runs."""
import os
import pathlib
import signal
import subprocess
import sys
import textwrap
import unittest

from fixture import ROOT, FixtureProject

sys.dont_write_bytecode = True
sys.path.insert(0, str(ROOT / "Scripts"))
import mutant_build
import mutant_changes

LIBRARY_CMAKE = "add_library(part STATIC source/Part.cpp)\ntarget_include_directories(part PUBLIC source)\n"
# One change survives: 10 becomes 11, which no test reaches; and one makes no difference: > becomes >=.
PART = """
#include "Part.h"

// Not more than 10 + 0.
int Capped(int value) {
    if (value > 10) {
        return 10;
    }
    return value;
}
"""
HEADER = "#pragma once\nint Capped(int value);\ninline int Next(int value) {\n    return value + 1;\n}\n"
TEST_CMAKE = "add_executable(test_part PartTest.cpp)\ntarget_link_libraries(test_part PRIVATE part)\nadd_test(NAME test_part COMMAND test_part)\n"
PART_TEST = '#include "Part.h"\nint main() {\n    return Capped(9) == 9 && Capped(20) == 10 && Next(1) == 2 ? 0 : 1;\n}\n'
WAITING_TEST = ('#include "Part.h"\n#include <unistd.h>\nint main() {\n    while (Next(0) == 0) {\n        sleep(1);\n'
                "    }\n    return Next(0) == 1 ? 0 : 1;\n}\n")
STRICTER_TEST = PART_TEST.replace("Capped(20)", "Capped(11) == 10 && Capped(20)")

EQUIVALENT = """
# Comments are skipped.

Libs/AAXLibrary/source/Part.cpp
- if (value > 10) {
+ if (value >= 10) {
  10 itself is returned either way.
"""


def changes(source):
    """Each change of a source as (line before, line after)."""
    return [(change.before, change.after) for change in mutant_changes.changes_of("Part.cpp", textwrap.dedent(source))]


class ChangesTest(unittest.TestCase):
    def body(self, line):
        return [after for before, after in changes(f"void f() {{\n    {line}\n}}\n") if before == line]

    def test_operators(self):
        self.assertEqual(self.body("return a + b;"), ["return a - b;"])
        self.assertEqual(self.body("return a <= b;"), ["return a < b;"])
        self.assertEqual(self.body("return a && b;"), ["return a || b;"])
        self.assertEqual(self.body("for (;; ++i) {"), ["for (;; --i) {"])
        self.assertIn("a -= b;", self.body("a += b;"))

    def test_numbers(self):
        self.assertEqual(self.body("return 3;"), ["return 0;", "return 4;", "return 6;"])
        self.assertEqual(self.body("return 0;"), ["return 1;"])
        self.assertEqual(self.body("return 0.5F;"), ["return 0.0F;", "return 1.0F;", "return 1.5F;"])
        self.assertEqual(self.body("return 0x10U;"), ["return 0x0U;", "return 0x11U;", "return 0x20U;"])
        self.assertEqual(self.body("return true;"), ["return false;"])

    def test_conditions(self):
        self.assertEqual(self.body("if (f(a)) {"), ["if (!(f(a))) {"])
        self.assertEqual(self.body("if (const int a = g(); f(a)) {"), ["if (const int a = g(); !(f(a))) {"])
        self.assertEqual(self.body("if (const int a = g()) {"), [])
        self.assertEqual(self.body("if (a == b) {"), ["if (a != b) {"], "its other operator negates it")

    def test_statements(self):
        made = changes("void f() {\n    first();\n    int a = 5 + b;\n    x.second();\n    y = g();\n}\n")
        self.assertIn(("first();", ";"), made)
        self.assertIn(("x.second();", ";"), made)
        self.assertIn(("x.second(); y = g();", "y = g(); x.second();"), made)
        self.assertNotIn(("int a = 5 + b;", ";"), made, "what declares is not removed")
        self.assertFalse([pair for pair in made if "first" in pair[0] and "second" in pair[0]], "they are not neighbours")

    def test_statements_of_two_blocks_are_not_swapped(self):
        made = changes("void f() {\n    if (a) {\n        first();\n    }\n    second();\n}\n")
        self.assertFalse([pair for pair in made if "first" in pair[0] and "second" in pair[0]])

    def test_only_code_is_changed(self):
        for source in ("// a + b\n", "/* a + b */\n", "#define A (a + 1)\n", "static_assert(a < 1);\n",
                       "auto text = \"a + 1\";\n", "struct A {\n    A();\n    void f(int);\n};\n", "virtual void f() = 0;\n"):
            self.assertEqual(changes(source), [], source)


class MutantsTest(FixtureProject):
    def setUp(self):
        super().setUp()
        self.write("CMakeLists.txt", (self.root / "CMakeLists.txt").read_text().replace(
            "add_subdirectory(Apps/varno)", "add_subdirectory(Libs/AAXLibrary)"))
        self.write("Libs/AAXLibrary/CMakeLists.txt", LIBRARY_CMAKE)
        self.write("Libs/AAXLibrary/source/Part.cpp", PART)
        self.write("Libs/AAXLibrary/source/Part.h", HEADER)
        self.write("Tests/CMakeLists.txt", "add_subdirectory(Libs/AAXLibrary)\n")
        self.write("Tests/Libs/AAXLibrary/CMakeLists.txt", TEST_CMAKE)
        self.write("Tests/Libs/AAXLibrary/PartTest.cpp", PART_TEST)
        self.write("Scripts/mutants-equivalent.txt", EQUIVALENT)

    def mutants(self, *arguments):
        done = subprocess.run([self.root / "Scripts/mutants", "--seed", "1", *arguments], env=self.environment(),
                              capture_output=True, text=True, check=False)
        return done.returncode, done.stdout, done.stderr

    def files(self):
        return {path: path.read_bytes() for path in self.root.rglob("*")
                if path.is_file() and "build" not in path.relative_to(self.root).parts}

    def test_verdicts(self):
        before = self.files()
        status, out, err = self.mutants("Libs")
        self.assertEqual(status, 0, err)
        self.assertEqual(self.files(), before, "the project itself is never changed")
        self.assertIn("survived: Libs/AAXLibrary/source/Part.cpp:5\nLibs/AAXLibrary/source/Part.cpp\n"
                      "- if (value > 10) {\n+ if (value > 11) {\n", out)
        self.assertNotIn("value >= 10", out)
        self.assertIn("10 of 10 changes: 9 killed (0 of them by a time-out), 1 survived, 0 did not compile\n"
                      "killed: 90.0 % (95 % confidence: 59.6 % to 98.2 %)\n", out)

        # Once more: from the journal.
        builds = self.counted("ninja")
        _, again, _ = self.mutants("Libs")
        self.assertEqual(again, out)
        self.assertLess(len(builds()), 5)

        # Into the document, in the place of what stood there.
        document = self.root / "docs/verification.md"
        marked = "# A\n\n<!-- mutants: written by ./run mutants --record -->\n{}<!-- /mutants -->\n\nB\n"
        self.write("docs/verification.md", marked.format("former\n"))
        self.mutants("--record", "Libs")
        text = document.read_text()
        self.assertRegex(text, r"\A# A\n\n<!-- mutants.*-->\n\n\d{4}-\d\d-\d\d, commit \S+, seed 1: 10 of 10 changes\.\n"
                               r"Killed: 90\.0 %, of 10 that compile; 0 of them by a time-out\. "
                               r"95 % confidence: 59\.6 % to 98\.2 %\.\n")
        self.assertIn("\n| `Libs/AAXLibrary/source` | 10 | 9 | 1 | 0 | 90.0 % |\n| together | 10 | 9 | 1 | 0 | 90.0 % |\n", text)
        self.assertIn("\n- `Libs/AAXLibrary/source/Part.cpp`: `if (value > 10) {` -> `if (value > 11) {`\n", text)
        self.assertTrue(text.endswith("<!-- /mutants -->\n\nB\n"))
        self.assertNotIn("former", text)
        self.write("docs/verification.md", "# A\n")
        self.assertIn("are missing", self.mutants("--record", "Libs")[2])

        # A better test kills the survivor; nothing else is tested again.
        self.write("Tests/Libs/AAXLibrary/PartTest.cpp", STRICTER_TEST)
        _, better, err = self.mutants("Libs")
        self.assertIn("10 of 10 changes: 10 killed", better)
        self.assertEqual(err.count("run: ["), 1)

        # One that makes no difference, where it is not listed.
        (self.root / "Scripts/mutants-equivalent.txt").unlink()
        _, out, _ = self.mutants("Libs/AAXLibrary/source/Part.cpp")
        self.assertIn("- if (value > 10) {\n+ if (value >= 10) {\n", out)
        self.assertEqual(out.count("survived: "), 1)

    def test_what_does_not_compile_does_not_count(self):
        self.write("Libs/AAXLibrary/source/Part.h", HEADER.replace("value + 1;", "*(0 + &value) + 1;"))
        self.write("Scripts/mutants-equivalent.txt",
                   "Libs/AAXLibrary/source/Part.h\n- ***\n+ ***(1 + &value)***\n  Reads beyond the value.\n")
        _, out, _ = self.mutants("Libs/AAXLibrary/source/Part.h")
        self.assertIn("4 of 4 changes: 3 killed (0 of them by a time-out), 0 survived, 1 did not compile\n", out)

    def test_a_time_out_counts_as_killed(self):
        self.write("Tests/Libs/AAXLibrary/PartTest.cpp", WAITING_TEST)
        _, out, _ = self.mutants("--limit", "1", "Libs/AAXLibrary/source/Part.h")
        self.assertIn("timed out (test_part): Libs/AAXLibrary/source/Part.h:4\n", out)
        self.assertIn("3 of 3 changes: 3 killed (1 of them by a time-out), 0 survived, 0 did not compile\n", out)

    def test_an_interrupted_run_goes_on(self):
        before = self.files()
        running = subprocess.Popen([self.root / "Scripts/mutants", "--seed", "1", "Libs"], env=self.environment(),
                                   stdout=subprocess.PIPE, stderr=subprocess.PIPE, text=True, start_new_session=True)
        for line in running.stderr:
            if line.startswith("run: [2/"):
                break
        os.killpg(running.pid, signal.SIGINT)
        out, _ = running.communicate()
        self.assertEqual(running.returncode, 130)
        self.assertRegex(out, r"\n[2-9] of 10 changes: ")
        self.assertEqual(self.files(), before)
        copy = self.root / "build/mutants/tree/Libs/AAXLibrary/source"
        self.assertEqual((copy / "Part.cpp").read_text(), PART.lstrip("\n"))
        self.assertEqual((copy / "Part.h").read_text(), HEADER)
        _, out, err = self.mutants("Libs")
        self.assertIn("10 of 10 changes: 9 killed", out)
        self.assertLess(err.count("run: ["), 9)

    def test_faults_of_the_project_are_no_results(self):
        self.write("Tests/Libs/AAXLibrary/PartTest.cpp", PART_TEST.replace("? 0 : 1", "? 1 : 0"))
        status, _, err = self.mutants("Libs")
        self.assertEqual(status, 1)
        self.assertIn("run: test_part is left out: it fails without any change (test_part)\n", err)
        self.assertRegex(err.splitlines()[-1], "run: Libs/AAXLibrary/source/Part.*: every test program fails without any change")
        self.write("Tests/Libs/AAXLibrary/PartTest.cpp", "nonsense\n")
        status, _, err = self.mutants("Libs")
        self.assertEqual(status, 1)
        self.assertIn("run: the tests do not build without any change:\n", err)

    def test_wrong_use(self):
        self.assertEqual(self.mutants("Tests")[::2],
                         (1, "run: mutants: 'Tests' is no file or folder of Interfaces, Libs, Source\n"))
        self.assertEqual(self.mutants("--count", "0")[0], 1)
        self.write("Scripts/mutants-equivalent.txt", "Part.cpp\n- a\nno line with a plus\n")
        self.assertIn("an entry is a file", self.mutants("Libs", "--list")[2])

    def test_help_is_ready_without_a_build(self):
        done = self.run_script("mutants", "--help")
        self.assertEqual(done.returncode, 0, done.stderr)
        self.assertIn("--count", done.stdout)
        self.assertFalse((self.root / "build/mutants").exists())

    def test_a_test_that_hangs_is_ended_with_all_that_it_started(self):
        program = self.folder / "hangs"
        program.write_text("#!/bin/sh\nsleep 60 & sleep 60\n")
        program.chmod(0o755)
        project = object.__new__(mutant_build.Project)
        project.programs = {str(program): pathlib.Path(self.folder)}
        self.assertEqual(project.run_tests(str(program), "*", 0.2), "timed out")


if __name__ == "__main__":
    unittest.main()
